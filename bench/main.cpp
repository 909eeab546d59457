// iras-bench: how long the returns take for a large employer. It makes a
// fresh payroll database, generates one employer with N employees for basis
// year 2024 (joiners, leavers, bonuses, commission, allowances, benefits in
// kind; IR8S for about 10%, Appendix 8A for about 5%, Appendix 8B for about
// 3%; all passing IRAS's checks), and times view generation, validation and
// generation of each return, the whole "All" run, a floor that reads the same
// rows with one plain query per return and writes the same bytes, and the
// IR8A Amendment that follows when 1% of the employees change. Each phase
// reports its own peak memory. A plain program run by hand; the numbers
// belong in bench/README.md.
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <malloc.h>
#include <sqlite3.h>
#include <sys/resource.h>

#include <fstream>
#include <iterator>
#include <memory>

#include "apps/run/FileType.h"
#include "apps/run/JobFactory.h"
#include "apps/run/RunController.h"
#include "platform/ais/AisFileChecker.h"
#include "platform/common/StreamingLog.h"
#include "platform/database/PostgresConnection.h"
#include "platform/database/Query.h"
#include "platform/database/Schema.h"
#include "platform/host/BQueryViewTable.h"
#include "platform/host/ReferenceEngine.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kEmployer = "BENCHCO";
constexpr int kYear = 2024;

struct Options {
    int employees = 10000;
    std::optional<fs::path> keep;  // work folder kept after the run
    std::string server;            // a PostgreSQL URI instead of a SQLite file
};

std::optional<Options> ParseArguments(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--employees" && i + 1 < argc) {
            char* end = nullptr;
            const long value = std::strtol(argv[++i], &end, 10);
            if (*end != '\0' || value < 100 || value > 2000000) return std::nullopt;
            options.employees = static_cast<int>(value);
        } else if (arg == "--keep" && i + 1 < argc) {
            options.keep = fs::path(argv[++i]);
        } else if (arg == "--db" && i + 1 < argc && iras::db::IsPostgresUri(argv[i + 1])) {
            options.server = argv[++i];
        } else {
            return std::nullopt;
        }
    }
    return options;
}

// The employer, its year-end setting and N employees, all in set-based SQL.
// A person n joins in 2024 when n % 10 = 3 and leaves in 2024 when
// n % 12 = 5; NRIC and FIN numbers carry their real check letters.
std::string EmployerScript(int employees) {
    return R"SQL(
INSERT INTO YEEmployer (YEEmployerId, YEEmployerDesc, ERName1, ERName2, EmployerSource, PayerID, TaxRefNo,
    AuthorisedName, Designation, TelephoneNo, EmailAddress, DivisionBranch, DateIncorporation) VALUES
('BENCHCO', 'Merlion Logistics (benchmark)', 'Merlion Logistics Holdings', 'Pte. Ltd.', 'PrivateSector', 'UEN',
 '201812345M', 'Lee Hui Min', 'Payroll Manager', '61234567', 'payroll@merlionlogistics.com.sg', 'Head Office',
 '2018-05-02');
INSERT INTO YEGlobal (YEGlobalId, YEYear, YEGlobalType, YEGlobalDesc, YEPeriodStart, YEPeriodEnd)
VALUES (901, 2024, 'CurIR8A', 'Year end 2024 (benchmark)', '2024-01-01', '2024-12-31');
UPDATE subregistry SET RegProperty1 = 'BENCHCO', RegProperty2 = '2024'
WHERE RegistryId = 'YEPRocess' AND SubRegistryId = 'TaxEmployerBasisYear';
-- The benchmark's user may run every return, so that iras-yearend can run on a kept database too.
INSERT INTO UserModuleRights (UserId, ModuleId) VALUES
('BENCH', 'YEIRASDirect'), ('BENCH', 'YEDirectCurIR8ARpt'), ('BENCH', 'YEDirectSupIR8ARpt'),
('BENCH', 'YEDirectIR8SRpt'), ('BENCH', 'YEDirectA8ARpt'), ('BENCH', 'YEDirectA8BRpt');
CREATE TEMP TABLE BenchName (k INTEGER PRIMARY KEY, Surname TEXT, Given TEXT, MalayM TEXT, MalayF TEXT,
                             IndianM TEXT, IndianF TEXT);
INSERT INTO BenchName VALUES
(0, 'Tan', 'Wei', 'Muhammad', 'Nurul', 'Rajesh', 'Priya'), (1, 'Lim', 'Jie', 'Ahmad', 'Siti', 'Arun', 'Kavitha'),
(2, 'Lee', 'Hui', 'Hafiz', 'Aisyah', 'Suresh', 'Lakshmi'), (3, 'Ng', 'Ling', 'Ismail', 'Farah', 'Vijay', 'Anitha'),
(4, 'Ong', 'Ming', 'Rizal', 'Zainab', 'Ravi', 'Deepa'), (5, 'Wong', 'Xin', 'Yusof', 'Nadia', 'Kumar', 'Meena'),
(6, 'Goh', 'Kai', 'Hassan', 'Aminah', 'Ganesh', 'Revathi'), (7, 'Chua', 'Yi', 'Osman', 'Hidayah', 'Mohan', 'Shanti'),
(8, 'Chan', 'Jun', 'Iskandar', 'Sarah', 'Prakash', 'Divya'), (9, 'Koh', 'Mei', 'Zulkifli', 'Aishah', 'Dinesh', 'Usha'),
(10, 'Teo', 'Hao', 'Rahman', 'Halimah', 'Sanjay', 'Geetha'), (11, 'Ang', 'Shu', 'Said', 'Rohana', 'Anand', 'Malini'),
(12, 'Yeo', 'Qi', 'Abdullah', 'Liyana', 'Bala', 'Radha'), (13, 'Tay', 'Kiat', 'Hamid', 'Sharifah', 'Murali', 'Sita'),
(14, 'Ho', 'Ying', 'Salleh', 'Nadiah', 'Kannan', 'Uma'), (15, 'Sim', 'Boon', 'Jamal', 'Syafiqah', 'Raj', 'Nirmala');
CREATE TEMP TABLE BenchPeople AS
WITH RECURSIVE Seq(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM Seq WHERE n < )SQL" +
           std::to_string(employees) + R"SQL(),
Base AS MATERIALIZED (
    SELECT n, n % 8 = 0 AS IsForeign, 2500 + (n * 7919 % 150) * 100 AS Monthly,
           printf('%07d', CASE WHEN n % 8 = 0 THEN 5000000 ELSE 7000000 END + n) AS Digits,
           CASE WHEN n % 10 = 3 THEN date('2024-01-01', '+' || (n % 300) || ' days')
                ELSE date('1995-01-01', '+' || (n * 53 % 10500) || ' days') END AS Commencement,
           CASE WHEN n % 12 <> 5 THEN '1899-12-30'
                WHEN n % 10 = 3 THEN date('2024-01-01', '+' || (300 + n % 60) || ' days')
                ELSE date('2024-01-01', '+' || (31 + n % 300) || ' days') END AS Cessation
    FROM Seq),
Person AS (
    SELECT b.*, CASE WHEN IsForeign THEN 'G' ELSE 'S' END AS Prefix,
           (2 * CAST(substr(Digits, 1, 1) AS INTEGER) + 7 * CAST(substr(Digits, 2, 1) AS INTEGER) + 6 * CAST(substr(Digits, 3, 1) AS INTEGER) + 5 * CAST(substr(Digits, 4, 1) AS INTEGER)
            + 4 * CAST(substr(Digits, 5, 1) AS INTEGER) + 3 * CAST(substr(Digits, 6, 1) AS INTEGER) + 2 * CAST(substr(Digits, 7, 1) AS INTEGER)
            + CASE WHEN IsForeign THEN 4 ELSE 0 END) % 11 AS CheckIndex,
           CASE WHEN n % 2 = 0 THEN 'F' ELSE 'M' END AS Gender,
           CASE WHEN Commencement > '2024-01-01' THEN Commencement ELSE '2024-01-01' END AS PaymentFrom,
           CASE WHEN Cessation > '2024-01-01' THEN Cessation ELSE '2024-12-31' END AS PaymentTo,
           s.Surname || ' ' || g.Given || ' ' || g2.Given AS Chinese,
           CASE WHEN n % 2 = 0 THEN s.MalayF || ' binte ' ELSE s.MalayM || ' bin ' END || g.MalayM AS Malay,
           CASE WHEN n % 2 = 0 THEN s.IndianF || ' d/o ' ELSE s.IndianM || ' s/o ' END || g.IndianM AS Indian
    FROM Base b JOIN BenchName s ON s.k = b.n % 16 JOIN BenchName g ON g.k = b.n / 16 % 16
    JOIN BenchName g2 ON g2.k = b.n / 256 % 16)
SELECT n, 100000 + n AS Sys, IsForeign, Monthly, Gender, Commencement, Cessation, PaymentFrom, PaymentTo,
       Prefix || Digits || substr(CASE WHEN IsForeign THEN 'XWUTRQPNMLK' ELSE 'JZIHGFEDCBA' END, CheckIndex + 1, 1)
           AS TaxNo,
       CASE n % 5 WHEN 3 THEN Malay WHEN 4 THEN Indian ELSE Chinese END AS Name,
       (julianday(PaymentTo) - julianday(PaymentFrom) + 1) / 366.0 AS Worked,
       CASE WHEN PaymentFrom = '2024-01-01' AND PaymentTo = '2024-12-31' THEN Monthly ELSE 0 END AS Aws,
       CASE WHEN n % 4 = 0 THEN round(Monthly * (1 + n % 3) * 0.5, 2) ELSE 0 END AS Variable FROM Person;
INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId, PayeeIDType, TaxNo, EEName1,
    IRASNationalityCode, Gender, DOB, Designation, PaymentFrom, PaymentTo, Commencement, Cessation)
SELECT 'BENCHCO', 2024, Sys, 901, CASE WHEN IsForeign THEN 'FIN' ELSE 'NRIC' END, TaxNo, Name,
       CASE WHEN NOT IsForeign THEN '301' WHEN n % 3 = 0 THEN '304' ELSE '336' END, Gender,
       date('1960-01-01', '+' || (n * 37 % 14600) || ' days'),
       CASE WHEN n % 997 = 1 THEN 'Director' ELSE CASE n % 6 WHEN 0 THEN 'Warehouse Supervisor'
            WHEN 1 THEN 'Logistics Coordinator' WHEN 2 THEN 'Accounts Executive' WHEN 3 THEN 'Driver'
            WHEN 4 THEN 'Operations Manager' ELSE 'Software Engineer' END END,
       PaymentFrom, PaymentTo, Commencement, Cessation FROM BenchPeople;
INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, ContratualBonus, NonContratualBonus, BonusDeclared,
    DirectorFee, DirFeeApproved, Commission, CommissionFrom, CommissionTo, CommissionStatus, Transport,
    Entertainment, OtherAllowance, Gratuity, BenefitsInKind, EECPFPension, Donation, MOSQFund, Insurance)
SELECT Sys, 2024, 'CurIR8A', round(Monthly * 12 * Worked, 2), Aws, Variable,
       CASE WHEN Variable > 0 THEN '2024-12-06' ELSE '1899-12-30' END,
       CASE WHEN n % 997 = 1 THEN 30000 ELSE 0 END, CASE WHEN n % 997 = 1 THEN '2024-03-28' ELSE '1899-12-30' END,
       CASE WHEN n % 7 = 0 THEN round(Monthly * 1.8 * Worked, 2) ELSE 0 END,
       CASE WHEN n % 7 = 0 THEN PaymentFrom ELSE '1899-12-30' END,
       CASE WHEN n % 7 = 0 THEN PaymentTo ELSE '1899-12-30' END,
       CASE WHEN n % 7 <> 0 THEN '' WHEN n % 2 = 0 THEN 'CommissionMonthly' ELSE 'CommissionOther' END,
       CASE WHEN n % 3 = 0 THEN round(1800 * Worked, 2) ELSE 0 END, CASE WHEN n % 11 = 0 THEN 2400 ELSE 0 END,
       CASE WHEN n % 6 = 0 THEN 600 ELSE 0 END, CASE WHEN n % 24 = 5 THEN Monthly * 2 ELSE 0 END,  -- gratuity
       CASE WHEN n % 9 = 0 THEN 1800 + (n % 5) * 1200 ELSE 0 END,  -- benefits in kind (Appendix 8A)
       CASE WHEN IsForeign THEN 0 ELSE round((min(Monthly, 6800) * 12 * Worked + Aws + Variable) * 0.2, 0) END,
       CASE WHEN n % 5 = 0 THEN 24 ELSE 0 END, CASE WHEN n % 5 = 3 AND NOT IsForeign THEN 60 ELSE 0 END,
       CASE WHEN n % 13 = 0 THEN 360 ELSE 0 END FROM BenchPeople;
INSERT INTO Personal (PersonalSysId, PersonalName, DateOfBirth)
SELECT PersonalSysId, EEName1, DOB FROM YEEmployee WHERE YEEmployerId = 'BENCHCO';
INSERT INTO Employee (EmployeeSysId, EmployeeCode, PersonalSysId, DateJoined, DateLeft)
SELECT 400000 + n, 'MLH' || printf('%06d', n), Sys, Commencement, Cessation FROM BenchPeople;
INSERT INTO EmployeeBank (EmployeeSysId, IRASBankCode, BankName, BankAccountNo)
SELECT 400000 + n, CAST(n % 4 + 1 AS TEXT), CASE n % 4 WHEN 0 THEN 'DBS Bank' WHEN 1 THEN 'UOB'
       WHEN 2 THEN 'OCBC Bank' ELSE 'HSBC' END, printf('%03d-%06d-%d', n % 997, n, n % 10) FROM BenchPeople;
-- IR8S for about 10%: full-year citizens, Section A months from the monthly pay,
-- the bonuses in December, the thirteenth (total) row, 0 to 3 Section B refunds.
INSERT INTO IR8S (PersonalSysId, YEYear, DateOfPRGranted, ApprovalForFullCPF, FlagExcessCPF, IR8SIndicator, EEVolCPF)
SELECT Sys, 2024, NULL, '', 'Y', 'Y', 0 FROM BenchPeople WHERE n % 10 = 1 AND n % 12 <> 5;
INSERT INTO IR8SA (PersonalSysId, YEYear, IR8SOrder, IR8SMonth, OrdWages, ContriOrdERCPF, ContriOrdEECPF,
                   AddWages, ContriAddERCPF, ContriAddEECPF)
WITH RECURSIVE Months(m) AS (SELECT 1 UNION ALL SELECT m + 1 FROM Months WHERE m < 12)
SELECT p.Sys, 2024, m.m, substr('JanFebMarAprMayJunJulAugSepOctNovDec', m.m * 3 - 2, 3), p.Monthly,
       round(min(p.Monthly, 6800) * 0.17, 2), round(min(p.Monthly, 6800) * 0.20, 2),
       CASE WHEN m.m = 12 THEN p.Aws + p.Variable ELSE 0 END,
       CASE WHEN m.m = 12 THEN round((p.Aws + p.Variable) * 0.17, 0) ELSE 0 END,
       CASE WHEN m.m = 12 THEN round((p.Aws + p.Variable) * 0.20, 0) ELSE 0 END
FROM BenchPeople p CROSS JOIN Months m WHERE p.n % 10 = 1 AND p.n % 12 <> 5;
INSERT INTO IR8SA (PersonalSysId, YEYear, IR8SOrder, IR8SMonth, OrdWages, ContriOrdERCPF, ContriOrdEECPF,
                   AddWages, ContriAddERCPF, ContriAddEECPF)
SELECT PersonalSysId, YEYear, 13, 'Total', sum(OrdWages), sum(ContriOrdERCPF), sum(ContriOrdEECPF),
       sum(AddWages), sum(ContriAddERCPF), sum(ContriAddEECPF)
FROM IR8SA WHERE YEYear = 2024 GROUP BY PersonalSysId, YEYear;
INSERT INTO IR8SC (PersonalSysId, YEYear, RefundSysId, AddWageAmt, AddWageFrom, AddWageTo, AddWagePaidDate,
                   ERContribution, ERInterest, ERDate, EEContribution, EEInterest, EEDate)
WITH Refund(k, PeriodFrom, PeriodTo, Paid, Refunded) AS (VALUES
    (1, '2024-01-01', '2024-04-30', '2024-04-26', '2024-05-10'),
    (2, '2024-05-01', '2024-08-31', '2024-08-28', '2024-09-10'),
    (3, '2024-09-01', '2024-12-31', '2024-12-20', '2025-01-10'))
SELECT p.Sys, 2024, r.k, 1200 + (p.n % 7) * 100, r.PeriodFrom, r.PeriodTo, r.Paid,
       60 + p.n % 40, CASE WHEN r.k = 2 THEN 1.25 ELSE 0 END, r.Refunded, 75 + p.n % 50, 0, r.Refunded
FROM BenchPeople p JOIN Refund r ON r.k <= p.n % 4 WHERE p.n % 10 = 1 AND p.n % 12 <> 5;
-- Appendix 8A for about 5%: people with benefits in kind, whose total is the
-- IR8A's (holiday and club).
INSERT INTO A8A (PersonalSysId, YEYear, OccupationDays, NoOfEESharingQtr, OHQStatus, Holidays, Clubs, TotalBenefitInKind)
SELECT Sys, 2024, 0, 1, 'N', 1200 + (n % 5) * 1200, 600, 1800 + (n % 5) * 1200 FROM BenchPeople WHERE n % 18 = 0;
-- Appendix 8B for about 3%: 1 to 15 share-plan rows, every third one in
-- Section C (a 2002 plan), the others in Section A (a 2021 plan).
INSERT INTO A8BRecord (PersonalSysId, YEYear, A8BRecordSysId, StockOptionType, CompanyIDType, RCBNo, CompanyName,
                       TypePlanGranted, DateStockGranted, DateExerciseStock, ExercisePriceStock, MktValueStockGrant,
                       MktValueExerciseStock, SharesAcquired, EESOPTaxExempt, CSOPTaxExempt, NSOPTaxExempt,
                       NoTaxExempt, StockGains, DateIncorporation)
WITH RECURSIVE Rows(k) AS (SELECT 1 UNION ALL SELECT k + 1 FROM Rows WHERE k < 15)
SELECT p.Sys, 2024, r.k, CASE WHEN r.k % 3 = 0 THEN 'CSOP' ELSE 'ESOP' END, 'CompanyROC',
       CASE WHEN r.k % 3 = 0 THEN '199704512M' ELSE '201812345M' END,
       CASE WHEN r.k % 3 = 0 THEN 'Straits Logistics Holdings Ltd' ELSE 'Merlion Logistics Holdings Pte Ltd' END,
       'ESOP', CASE WHEN r.k % 3 = 0 THEN '2002-06-03' ELSE '2021-03-01' END,
       CASE WHEN r.k % 3 = 0 THEN '2024-03-11' ELSE '2024-05-15' END,
       CASE WHEN r.k % 3 = 0 THEN 2.00 ELSE 1.20 END, CASE WHEN r.k % 3 = 0 THEN 2.40 ELSE 0 END,
       CASE WHEN r.k % 3 = 0 THEN 3.00 ELSE 2.18 END, CASE WHEN r.k % 3 = 0 THEN 1500 ELSE 2500 END,
       0, CASE WHEN r.k % 3 = 0 THEN 900.00 ELSE 0 END, 0,
       CASE WHEN r.k % 3 = 0 THEN 600.00 ELSE 2450.00 END, CASE WHEN r.k % 3 = 0 THEN 1500.00 ELSE 2450.00 END,
       '1899-12-30'
FROM BenchPeople p JOIN Rows r ON r.k <= 1 + p.n % 15 WHERE p.n % 33 = 2;
INSERT INTO A8B (PersonalSysId, YEYear, TotalESOPNoTaxExempt, TotalESOPStockGains, TotalCSOPTaxExempt,
                 TotalCSOPTaxExemptBef, TotalCSOPNoTaxExempt, TotalCSOPNoTaxExemptBef, TotalCSOPStockGains,
                 TotalCSOPStockGainsBef, GrandTotalStockGains)
SELECT PersonalSysId, 2024, sum(CASE WHEN StockOptionType = 'ESOP' THEN NoTaxExempt ELSE 0 END),
       sum(CASE WHEN StockOptionType = 'ESOP' THEN StockGains ELSE 0 END), sum(CSOPTaxExempt), sum(CSOPTaxExempt),
       sum(CASE WHEN StockOptionType = 'CSOP' THEN NoTaxExempt ELSE 0 END),
       sum(CASE WHEN StockOptionType = 'CSOP' THEN NoTaxExempt ELSE 0 END),
       sum(CASE WHEN StockOptionType = 'CSOP' THEN StockGains ELSE 0 END),
       sum(CASE WHEN StockOptionType = 'CSOP' THEN StockGains ELSE 0 END), sum(StockGains)
FROM A8BRecord WHERE YEYear = 2024 AND PersonalSysId > 100000 GROUP BY PersonalSysId;
DROP TABLE BenchPeople; DROP TABLE BenchName;
)SQL";
}

struct Phase {
    std::string name;
    int records;  // what the phase works through: employees, or records of a file
    double seconds;
    double peakMiB;  // the process's peak resident memory during the phase
};
std::vector<Phase> phases;  // in the order they ran

// Peak resident memory (VmHWM) in MiB; ResetPeakMemory starts a new peak, so
// that each phase reports its own.
double PeakMemoryMiB() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind("VmHWM:", 0) == 0) return std::strtod(line.c_str() + 6, nullptr) / 1024.0;
    }
    struct rusage usage {};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

void ResetPeakMemory() {
    ::malloc_trim(0);  // what earlier phases freed goes back to the system first
    std::ofstream clear("/proc/self/clear_refs");
    clear << "5";
}

// Runs and times one phase; false (and the reason on stderr) when it failed.
bool Timed(const std::string& name, int records, const std::function<bool()>& step) {
    ResetPeakMemory();
    const auto start = std::chrono::steady_clock::now();
    bool ok = false;
    try {
        ok = step();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", name.c_str(), error.what());
    }
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    phases.push_back({name, records, took.count(), PeakMemoryMiB()});
    if (!ok) std::fprintf(stderr, "iras-bench: phase \"%s\" failed.\n", name.c_str());
    return ok;
}

double Seconds(const std::string& name) {
    for (const auto& phase : phases)
        if (phase.name == name) return phase.seconds;
    return 0.0;
}

// The run log's last lines and the first employee findings, for a refusal.
void ShowRefusal(const iras::StringList& lines, const iras::StringList& employeeErrors) {
    for (std::size_t i = lines.size() > 12 ? lines.size() - 12 : 0; i < lines.size(); ++i)
        std::fprintf(stderr, "  log: %s\n", lines[i].c_str());
    for (std::size_t i = 0; i < employeeErrors.size() && i < 12; ++i)
        std::fprintf(stderr, "  employee: %s\n", employeeErrors[i].c_str());
}

// Checks the file and that it holds the expected number of detail records.
bool CheckFile(const std::string& path, iras::AisKind kind, int expectedDetails) {
    const iras::AisCheckResult result = iras::CheckAisFile(path, kind);
    const auto described = result.Describe();
    for (std::size_t i = 0; i < described.size() && i < 10; ++i)
        std::fprintf(stderr, "  %s: %s\n", path.c_str(), described[i].c_str());
    if (result.detailRecords != expectedDetails)
        std::fprintf(stderr, "  %s holds %d detail records, expected %d\n", path.c_str(), result.detailRecords,
                     expectedDetails);
    return !result.HasErrors() && result.detailRecords == expectedDetails;
}

// One return as the benchmark times it: its type, its engine code, its file,
// how many employees it holds, and the floor's query (the same rows, ordered
// so that one employee's rows come together) with the widths of its records.
struct ReturnCase {
    iras::FileType type;
    const char* code;
    const char* fileName;  // of a trial run
    iras::AisKind kind;
    const char* countSql;
    const char* floorSql;
    int headerWidth;
    int detailWidth;
    bool trailer;
};

const ReturnCase kCases[] = {
    {iras::FileType::CurrentIR8A, "CurIR8A", "CUR_Submission(O).txt", iras::AisKind::IR8A,
     "SELECT COUNT(*) FROM YEEmployee WHERE YEEmployerId = 'BENCHCO' AND YEYear = 2024",
     "SELECT * FROM YEEmployee e JOIN IR8A i ON i.PersonalSysId = e.PersonalSysId AND i.YEYear = e.YEYear "
     "JOIN Employee m ON m.PersonalSysId = e.PersonalSysId LEFT JOIN EmployeeBank b ON b.EmployeeSysId = "
     "m.EmployeeSysId WHERE e.YEEmployerId = 'BENCHCO' AND e.YEYear = 2024 ORDER BY e.EEName1, e.PersonalSysId",
     1200, 1200, true},
    {iras::FileType::IR8S, "IR8S", "TEST2024eIR8S_Submission(O).txt", iras::AisKind::IR8S,
     "SELECT COUNT(*) FROM IR8S WHERE YEYear = 2024 AND PersonalSysId > 100000",
     "SELECT * FROM YEEmployee e JOIN IR8S s ON s.PersonalSysId = e.PersonalSysId AND s.YEYear = e.YEYear "
     "JOIN IR8SA a ON a.PersonalSysId = e.PersonalSysId AND a.YEYear = e.YEYear LEFT JOIN IR8SC c ON "
     "c.PersonalSysId = e.PersonalSysId AND c.YEYear = e.YEYear AND c.RefundSysId = a.IR8SOrder "
     "WHERE e.YEEmployerId = 'BENCHCO' AND e.YEYear = 2024 ORDER BY e.EEName1, e.PersonalSysId, a.IR8SOrder",
     1200, 1200, false},
    {iras::FileType::Appendix8A, "A8A", "TEST2024eA8A_Submission(O).txt", iras::AisKind::A8A,
     "SELECT COUNT(*) FROM A8A WHERE YEYear = 2024 AND PersonalSysId > 100000",
     "SELECT * FROM YEEmployee e JOIN A8A s ON s.PersonalSysId = e.PersonalSysId AND s.YEYear = e.YEYear "
     "LEFT JOIN A8AS2S3 a ON a.PersonalSysId = e.PersonalSysId AND a.YEYear = e.YEYear "
     "WHERE e.YEEmployerId = 'BENCHCO' AND e.YEYear = 2024 ORDER BY e.EEName1, e.PersonalSysId",
     800, 700, false},
    {iras::FileType::Appendix8B, "A8B", "TEST2024eA8B_Submission(O).txt", iras::AisKind::A8B,
     "SELECT COUNT(*) FROM A8B WHERE YEYear = 2024 AND PersonalSysId > 100000",
     "SELECT * FROM YEEmployee e JOIN A8B s ON s.PersonalSysId = e.PersonalSysId AND s.YEYear = e.YEYear "
     "JOIN A8BRecord r ON r.PersonalSysId = e.PersonalSysId AND r.YEYear = e.YEYear "
     "WHERE e.YEEmployerId = 'BENCHCO' AND e.YEYear = 2024 ORDER BY e.EEName1, e.PersonalSysId, "
     "r.StockOptionType, r.A8BRecordSysId",
     9300, 9300, true},
};

int CountOf(const char* sql) {
    iras::db::Query count("kovadb");
    count.SetSQL(sql);
    count.Open();
    return static_cast<int>(count.FieldByName(count.FieldNames().front()).AsInteger());
}

// The floor of one return: one plain query over the same rows, every column
// read as text and laid into a record of the return's width, written with CR
// LF; no view tables, no validation, no layout. Straight on SQLite.
std::uintmax_t WriteFloor(sqlite3* database, const ReturnCase& return_, const std::string& path) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database, return_.floorSql, -1, &statement, nullptr) != SQLITE_OK)
        throw std::runtime_error(std::string("floor query: ") + sqlite3_errmsg(database));
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        sqlite3_finalize(statement);
        throw std::runtime_error("cannot write " + path);
    }
    std::uintmax_t bytes = 0;
    std::string record;
    const auto put = [&](std::size_t width) {
        record.resize(width, ' ');
        record += "\r\n";
        bytes += std::fwrite(record.data(), 1, record.size(), file);
        record.clear();
    };
    record.assign("0");
    put(static_cast<std::size_t>(return_.headerWidth));
    std::int64_t current = -1;
    const int columns = sqlite3_column_count(statement);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        const std::int64_t person = sqlite3_column_int64(statement, 2);  // YEEmployee.PersonalSysId
        if (person != current && current != -1) put(static_cast<std::size_t>(return_.detailWidth));
        current = person;
        for (int c = 0; c < columns; ++c) {
            const unsigned char* text = sqlite3_column_text(statement, c);
            if (text != nullptr && record.size() < static_cast<std::size_t>(return_.detailWidth))
                record.append(reinterpret_cast<const char*>(text));
        }
    }
    if (current != -1) put(static_cast<std::size_t>(return_.detailWidth));
    if (return_.trailer) {
        record.assign("2");
        put(static_cast<std::size_t>(return_.detailWidth));
    }
    sqlite3_finalize(statement);
    std::fclose(file);
    return bytes;
}

// The dialogs of an unattended "All" run: every question answered Yes.
class YesDialogs : public iras::RunDialogs {
public:
    void Show(iras::MessageKind kind, const std::string& text) override {
        if (kind == iras::MessageKind::Error) std::fprintf(stderr, "  message: %s\n", text.c_str());
    }
    bool Confirm(const std::string&) override { return true; }
};

int RunBench(const Options& options, const fs::path& work) {
    using namespace iras;
    const int n = options.employees;
    const fs::path database = work / "payroll.db";
    const std::string runFolder = (work / "run").string();
    fs::create_directories(runFolder);  // and the work folder with it
    if (!Timed("create database + load employer", n, [&] {
            if (options.server.empty()) {
                db::CreateDatabase(database, false);
                db::ConnectionRegistry::Register("kovadb", {"sqlite", database.string(), false});
            } else {
                db::CreateDatabase(options.server, false);
                db::ConnectionRegistry::Register("kovadb", {db::PostgresDriver, options.server, false});
            }
            db::ExecScript("kovadb", EmployerScript(n));
            // A server plans by the statistics of its tables, which a fresh
            // load has only once autovacuum has come by.
            if (!options.server.empty()) db::ExecScript("kovadb", "ANALYZE");
            return true;
        }))
        return 1;

    BQueryViewTable session(SessionSettings{"BENCH", "127.0.0.1", kYear});
    ReferenceEngine engine(&session);  // for the engine's own phases; each job makes its own
    engine.SetYEYear(kYear);
    engine.SetYEEmployerId(kEmployer);
    const auto generate = [&](const std::string& type, bool original) {
        engine.SetYESubmissionType(type);
        engine.SetYEIgnoreChanges(original);
        if (engine.GenerateViewTables() != 0) return true;
        std::fprintf(stderr, "  engine: %s\n", engine.LastError().c_str());
        return false;
    };

    // The "All" run first, while nothing else has grown the process, as
    // `iras-yearend generate --type all` makes it: an actual
    // Original of every return, files copied to the output folder, the
    // summary and the three logs saved in the report folder.
    const fs::path outFolder = work / "out";
    const fs::path reportFolder = work / "report";
    fs::create_directories(outFolder);
    fs::create_directories(reportFolder);
    ReturnJobFactory factory;
    int counts[std::size(kCases)] = {};
    for (std::size_t r = 0; r < std::size(kCases); ++r) counts[r] = CountOf(kCases[r].countSql);
    bool ok = Timed("All: generate --type all", n, [&] {
             YesDialogs dialogs;
             StreamingLog log([&] { return reportFolder / LogFileName(LogFileKind::RunLog); }, "\n", 0);
             StreamingLog debug([&] { return reportFolder / LogFileName(LogFileKind::DebugLog); });
             RunServices services;
             services.logMemo = &log;
             services.debugMemo = &debug;
             services.session = &session;
             services.dialogs = &dialogs;
             services.rights = [](const std::string&, const std::string&) { return true; };
             services.reportDirectory = [&] { return reportFolder; };
             RunController controller(RunMode::Generation, services);
             RunChoices& choices = controller.Choices();
             choices.fileType = FileType::All;
             choices.employerId = kEmployer;
             choices.basisYear = std::to_string(kYear);
             choices.original = true;
             choices.fileDirectory = outFolder.string();
             const RunOutcome outcome = controller.PreviewClick();
             for (LogFileKind kind : {LogFileKind::RunLog, LogFileKind::DebugLog, LogFileKind::EmployeeErrorLog})
                 controller.SaveLogFile(kind);
             if (outcome != RunOutcome::Done)
                 ShowRefusal(controller.LogMemo().Lines(), controller.EmployeeErrorList());
             return outcome == RunOutcome::Done;
         });

    // The floor: one plain query per return, the same bytes, nothing else.
    std::uintmax_t floorBytes = 0, allBytes = 0;
    if (ok && options.server.empty()) {
        sqlite3* raw = nullptr;
        sqlite3_open_v2(database.string().c_str(), &raw, SQLITE_OPEN_READONLY, nullptr);
        std::unique_ptr<sqlite3, int (*)(sqlite3*)> floorDb(raw, sqlite3_close);
        const fs::path floorFolder = work / "floor";
        fs::create_directories(floorFolder);
        ok = Timed("floor: one query per return", n, [&] {
            for (const ReturnCase& return_ : kCases)
                floorBytes += WriteFloor(floorDb.get(), return_, (floorFolder / return_.code).string());
            return true;
        });
        std::error_code sizeError;
        for (const auto& entry : fs::directory_iterator(outFolder, sizeError)) allBytes += entry.file_size();
    }

    // Each return alone, as a trial run of the session form makes it: view
    // tables, validation (which builds them again), generation into the run
    // folder, and the AIS checker on the file. The logs are kept in memory as
    // the form keeps them.
    for (std::size_t r = 0; r < std::size(kCases) && ok; ++r) {
        const ReturnCase& return_ = kCases[r];
        const int expected = counts[r];
        const std::string what = std::string(return_.code) + ": ";
        JobSetup setup;
        setup.session = &session;
        setup.params.sortOrder = 2;
        setup.params.employerId = kEmployer;
        setup.params.year = kYear;
        setup.params.original = setup.params.ignoreChanges = setup.params.check = true;
        setup.params.actualRun = false;
        setup.runFolder = runFolder;
        setup.basisYear = kYear;
        std::unique_ptr<RSubmissionJob> job = factory.Create(return_.type, setup);
        MemoryLog log, debug;
        StringList employeeErrors;
        job->SetLogMemo(&log);
        job->SetInternalMemo(&debug);
        job->SetEmployeeErrorLog(&employeeErrors);
        ok = Timed(what + "GenerateViewTables", n, [&] { return generate(return_.code, true); }) &&
             Timed(what + "validation (+ view tables)", expected, [&] { return job->ValidateFile() != 0; }) &&
             Timed(what + "generation", expected, [&] { return job->ProcessFile() != 0; });
        if (!ok) ShowRefusal(log.View(), employeeErrors);
        ok = ok && Timed(what + "CheckAisFile", expected, [&] {
                 return CheckFile((fs::path(runFolder) / return_.fileName).string(), return_.kind, expected);
             });
    }

    // The Amendment of IR8A after the "All" run's submission, when 1% change.
    int changed = 0;
    ok = ok && Timed("change 1% of employees", n, [&] {
             db::ExecScript("kovadb", "UPDATE IR8A SET GrossTotal = GrossTotal + 1500, Transport = Transport + 120 "
                                      "WHERE YEYear = 2024 AND PersonalSysId % 100 = 17");
             changed = CountOf("SELECT COUNT(*) FROM IR8A WHERE YEYear = 2024 AND PersonalSysId % 100 = 17");
             return changed > 0;
         });
    ok = ok && Timed("CurIR8A amendment: GenerateViewTables", n, [&] { return generate("CurIR8A", false); });
    if (ok) {
        JobSetup setup;
        setup.session = &session;
        setup.params.sortOrder = 2;
        setup.params.employerId = kEmployer;
        setup.params.year = kYear;
        setup.params.check = true;
        setup.params.original = setup.params.ignoreChanges = setup.params.actualRun = false;
        setup.runFolder = runFolder;
        setup.basisYear = kYear;
        std::unique_ptr<RSubmissionJob> job = factory.Create(FileType::CurrentIR8A, setup);
        MemoryLog log, debug;
        StringList employeeErrors;
        job->SetLogMemo(&log);
        job->SetInternalMemo(&debug);
        job->SetEmployeeErrorLog(&employeeErrors);
        ok = Timed("CurIR8A amendment: validation (+ view tables)", changed,
                   [&] { return job->ValidateFile() != 0; }) &&
             Timed("CurIR8A amendment: generation", changed, [&] { return job->ProcessFile() != 0; }) &&
             Timed("CurIR8A amendment: CheckAisFile", changed, [&] {
                 return CheckFile((fs::path(runFolder) / "CUR_Submission(A).txt").string(), AisKind::IR8A, changed);
             });
        if (!ok) ShowRefusal(log.View(), employeeErrors);
    }

    std::printf("iras-bench: every return of %d employees (IR8S %d, Appendix 8A %d, Appendix 8B %d), employer %s, "
                "basis year %d, work folder %s\n\n",
                n, counts[1], counts[2], counts[3], kEmployer, kYear, work.string().c_str());
    std::printf("%-46s %9s %9s %12s %9s\n", "phase", "records", "seconds", "records/s", "peak MiB");
    for (const auto& phase : phases)
        std::printf("%-46s %9d %9.3f %12.0f %9.1f\n", phase.name.c_str(), phase.records, phase.seconds,
                    phase.seconds > 0 ? phase.records / phase.seconds : 0.0, phase.peakMiB);
    std::printf("\n");
    if (allBytes != 0)
        std::printf("files of the \"All\" run: %ju bytes; floor: %ju bytes\n", allBytes, floorBytes);
    for (const auto& phase : phases) {
        if (phase.name != "All: generate --type all") continue;
        const double floorSeconds = Seconds("floor: one query per return");
        std::printf("all-run N=%d: %.2f s, floor %.2f s, ratio %.1f, peak memory %.0f MiB\n", n, phase.seconds,
                    floorSeconds, floorSeconds > 0 ? phase.seconds / floorSeconds : 0.0, phase.peakMiB);
    }
    db::ConnectionRegistry::Unregister("kovadb");
    return ok ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    const auto options = ParseArguments(argc, argv);
    if (!options) {
        std::fprintf(stderr,
                     "usage: iras-bench [--employees N] [--keep DIR] [--db URI]\n  N: 100 to 2000000 employees "
                     "(default 10000)\n  DIR: a new folder that keeps the database and files (default: a "
                     "temporary folder, removed afterwards)\n  URI: an empty PostgreSQL database "
                     "(postgresql://...) to work in instead of a SQLite file\n");
        return 2;
    }
    const fs::path work = options->keep ? *options->keep
                                        : fs::temp_directory_path() / ("iras-bench-" + std::to_string(::getpid()));
    std::error_code error;
    if (fs::exists(work / "payroll.db", error)) {
        std::fprintf(stderr, "iras-bench: %s already holds a payroll.db; give a new folder.\n", work.string().c_str());
        return 2;
    }
    int result = 1;
    try {
        result = RunBench(*options, work);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "iras-bench: %s\n", failure.what());
    }
    if (!options->keep) fs::remove_all(work, error);
    return result;
}
