// iras-bench: how long the IR8A return takes for a large employer. It makes a
// fresh payroll database, generates one employer with N employees for basis
// year 2024 (joiners, leavers, bonuses, commission, allowances, benefits in
// kind, all passing IRAS's checks), and times each phase of an Original run
// and of the Amendment that follows its submission when 1% of the employees
// change. A plain program run by hand; the numbers belong in bench/README.md.
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

#include "platform/ais/AisFileChecker.h"
#include "platform/database/PostgresConnection.h"
#include "platform/database/Query.h"
#include "platform/database/Schema.h"
#include "platform/host/BQueryViewTable.h"
#include "platform/host/ReferenceEngine.h"
#include "submission/ir8a/RIR8AeSubmission.h"

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
DROP TABLE BenchPeople; DROP TABLE BenchName;
)SQL";
}

struct Phase {
    std::string name;
    int employees;
    double seconds;
};
std::vector<Phase> phases;  // in the order they ran

// Runs and times one phase; false (and the reason on stderr) when it failed.
bool Timed(const std::string& name, int employees, const std::function<bool()>& step) {
    const auto start = std::chrono::steady_clock::now();
    bool ok = false;
    try {
        ok = step();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", name.c_str(), error.what());
    }
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    phases.push_back({name, employees, took.count()});
    if (!ok) std::fprintf(stderr, "iras-bench: phase \"%s\" failed.\n", name.c_str());
    return ok;
}

// The run log's last lines and the first employee findings, for a refusal.
void ShowRefusal(const iras::MemoryLog& log, const iras::StringList& employeeErrors) {
    const auto& lines = log.View();
    for (std::size_t i = lines.size() > 12 ? lines.size() - 12 : 0; i < lines.size(); ++i)
        std::fprintf(stderr, "  log: %s\n", lines[i].c_str());
    for (std::size_t i = 0; i < employeeErrors.size() && i < 12; ++i)
        std::fprintf(stderr, "  employee: %s\n", employeeErrors[i].c_str());
}

// Checks the file and that it holds the expected number of employees.
bool CheckFile(const std::string& path, int expectedDetails) {
    const iras::AisCheckResult result = iras::CheckAisFile(path, iras::AisKind::IR8A);
    const auto described = result.Describe();
    for (std::size_t i = 0; i < described.size() && i < 10; ++i)
        std::fprintf(stderr, "  %s: %s\n", path.c_str(), described[i].c_str());
    if (result.detailRecords != expectedDetails)
        std::fprintf(stderr, "  %s holds %d detail records, expected %d\n", path.c_str(), result.detailRecords,
                     expectedDetails);
    return !result.HasErrors() && result.detailRecords == expectedDetails;
}

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
    engine.SetYESubmissionType("CurIR8A");
    const auto generate = [&](bool original) {
        engine.SetYEIgnoreChanges(original);
        if (engine.GenerateViewTables() != 0) return true;
        std::fprintf(stderr, "  engine: %s\n", engine.LastError().c_str());
        return false;
    };

    // One IR8A run as the session form makes it (trial, no save prompt): the
    // file goes into the run folder. Validation rebuilds the view tables itself.
    std::string files[2];
    const auto run = [&](bool original, int expected) {
        IRASSubmissionParameters params;
        params.employerId = kEmployer;
        params.year = kYear;
        params.original = params.ignoreChanges = original;
        RIR8AeSubmission job(&session, params, runFolder, "");
        MemoryLog log, debug;
        StringList employeeErrors;
        job.SetLogMemo(&log);
        job.SetInternalMemo(&debug);
        job.SetEmployeeErrorLog(&employeeErrors);
        job.SetIR8AType("CurIR8A");
        job.SetBasisYear(kYear);
        const std::string what = original ? "original: " : "amendment: ";
        const bool made = Timed(what + "ValidateIR8AFile (+ view tables)", expected,
                                [&] { return job.ValidateIR8AFile() != 0; }) &&
                          Timed(what + "ProcessIR8AeSubmission", expected,
                                [&] { return job.ProcessIR8AeSubmission() != 0; });
        if (!made) ShowRefusal(log, employeeErrors);
        const std::string file = files[original ? 0 : 1] = job.GetOutputFilePath();
        return made && Timed(what + "CheckAisFile", expected, [&] { return CheckFile(file, expected); });
    };

    int changed = 0;
    const bool ok =
        Timed("original: GenerateViewTables", n, [&] { return generate(true); }) && run(true, n) &&
        Timed("SubmitRecords", n, [&] { return engine.SubmitRecords(true, false) != 0; }) &&
        Timed("change 1% of employees", n, [&] {
            db::ExecScript("kovadb", "UPDATE IR8A SET GrossTotal = GrossTotal + 1500, Transport = Transport + 120 "
                                     "WHERE YEYear = 2024 AND PersonalSysId % 100 = 17");
            db::Query count("kovadb");
            count.SetSQL("SELECT COUNT(*) AS Changed FROM IR8A WHERE YEYear = 2024 AND PersonalSysId % 100 = 17");
            count.Open();
            return (changed = static_cast<int>(count.FieldByName("Changed").AsInteger())) > 0;
        }) &&
        Timed("amendment: GenerateViewTables", n, [&] { return generate(false); }) && run(false, changed);

    std::printf("iras-bench: IR8A of %d employees, employer %s, basis year %d, work folder %s\n\n", n, kEmployer,
                kYear, work.string().c_str());
    std::printf("%-42s %9s %9s %12s\n", "phase", "employees", "seconds", "employees/s");
    for (const auto& phase : phases)
        std::printf("%-42s %9d %9.3f %12.0f\n", phase.name.c_str(), phase.employees, phase.seconds,
                    phase.seconds > 0 ? phase.employees / phase.seconds : 0.0);
    std::printf("\n");
    std::error_code sizeError;
    for (const auto& file : files)
        if (!file.empty()) std::printf("%s: %ju bytes\n", file.c_str(), fs::file_size(file, sizeError));
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
