-- Sample payroll data for trying and testing the IRAS year-end returns.
--
-- Employers:
--   IR8AYA2025  Lion City Precision Engineering: clean. Every return of
--               year-end year 2024 (current IR8A for 2024, IR8S, Appendix 8A,
--               Appendix 8B) and the supplementary IR8A of year-end year 2023
--               (basis year 2022) pass every check.
--               Also holds year-end year 2023 and the copy of the 2023 return
--               last submitted (YEYear 92023) with the copy before it (82023).
--   ERRCO       Errata Trading: every record breaks a check, named in the
--               comment of the row. Its employer row breaks the header checks.
--   ERRHEAD     Blank Page Services: header checks that ERRCO's row cannot
--               break at the same time (blank organisation id type, blank
--               names, blank e-mail, a source that Appendix 8B refuses).
--   ONEIL       "O'Neil; ^Holdings" / "Pte Ltd": characters that the AIS file
--               cannot carry in the employer name; supplementary employees who
--               ceased after the basis year or have no cessation date.
--
-- Hand-checked figures used by the tests (year-end year 2024, current IR8A):
--   1001 Lim Wei Jie, Original file:
--     GrossTotal 84000.48 -> 84000; Bonus 7000.00 + 3500.99 = 10500.99 -> 10500;
--     DirectorFee 0; OthersAmt = Commission 1200.75 + Transport 1800.40
--     + Entertainment 600.00 + other allowances (300.25 + 150.10 + 0)
--     + stock gains after 2450.00 + benefits in kind 5400.00 = 11901.50 -> 11901;
--     Amt = 84000 + 10500 + 0 + 11901 = 106401.
--   1002 Nur Aisyah binte Rahman: donation 10.01.
--   1003 Rajesh s/o Krishnan: commission -350.00 (a claw-back). Original:
--     commission counts 0, Amt = 96000 + 8000 + 2400 = 106400. Amendment:
--     OthersAmt 2050, Amt 106050.
--   1006 Tan Boon Huat: Appendix 8B in all four sections, plans before and
--     after 2003 (totals worked out at the A8B rows below).
--
-- Year-end global rows: 1 = year 2023 current, 2 = year 2023 supplementary
-- (basis 2022), 3 = year 2024 current, 4 = year 2024 supplementary (basis 2023).

INSERT INTO YEEmployer (YEEmployerId, YEEmployerDesc, ERName1, ERName2, EmployerSource, PayerID, TaxRefNo,
                        AuthorisedName, Designation, TelephoneNo, EmailAddress, DivisionBranch, DateIncorporation) VALUES
('IR8AYA2025', 'Lion City Precision Engineering', 'Lion City Precision Engineering', 'Pte. Ltd.', 'PrivateSector', 'UEN',
 '201912345K', 'Tan Mei Ling', 'Finance Manager', '65551234', 'meiling.tan@lioncityprecision.com.sg', 'Headquarters', '2019-04-15'),
-- Header: source 'SourceRetired' is no keyword ("Invalid Source."); organisation
-- id type GSTN carries the withdrawn code G; no organisation id no.; no
-- authorised person; a telephone number of blanks; an e-mail address of 55
-- characters (IRAS accepts at most 50).
('ERRCO', 'Errata Trading (every check broken)', 'Errata Trading', 'Pte Ltd', 'SourceRetired', 'GSTN',
 '', '', 'Director', '   ', 'payroll.department.year.end.returns@errata-trading.sg', 'Tampines Branch', '2010-08-01'),
-- Header: blank organisation id type; both name lines blank, so the employer
-- name is blank; blank e-mail address; source Mindef, which Appendix 8B does
-- not accept (only Private Sector and Others file it).
('ERRHEAD', 'Blank Page Services (header checks)', '', '', 'Mindef', '',
 '199512345D', 'Koh Ah Beng', 'Clerk', '67778888', '', '', '1995-03-01'),
('ONEIL', 'O''Neil Holdings', 'O''Neil; ^Holdings', 'Pte Ltd', 'PrivateSector', 'UEN',
 '201533321W', 'Fiona O''Neil', 'Managing Director', '62223333', 'fiona@oneil-holdings.com.sg', 'Robinson Road', '2015-11-02');

INSERT INTO YEGlobal (YEGlobalId, YEYear, YEGlobalType, YEGlobalDesc, YEPeriodStart, YEPeriodEnd) VALUES
(1, 2023, 'CurIR8A', 'Year end 2023, basis year 2023', '2023-01-01', '2023-12-31'),
(2, 2023, 'SupIR8A', 'Year end 2023, supplementary for basis year 2022', '2022-01-01', '2022-12-31'),
(5, 2022, 'CurIR8A', 'Year end 2022, basis year 2022', '2022-01-01', '2022-12-31'),
(6, 2022, 'SupIR8A', 'Year end 2022, supplementary for basis year 2021', '2021-01-01', '2021-12-31'),
(3, 2024, 'CurIR8A', 'Year end 2024, basis year 2024', '2024-01-01', '2024-12-31'),
(4, 2024, 'SupIR8A', 'Year end 2024, supplementary for basis year 2023', '2023-01-01', '2023-12-31');

------------------------------------------------------------------------------
-- IR8AYA2025: hand-written employees of year-end year 2024
------------------------------------------------------------------------------
INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId, SupYEGlobalId, PayeeIDType, TaxNo,
                        EEName1, EEName2, IRASNationalityCode, Gender, DOB, Designation,
                        PaymentFrom, PaymentTo, Commencement, Cessation) VALUES
('IR8AYA2025', 2024, 1001, 3, 4, 'NRIC', 'S8012345J', 'Lim Wei Jie', '', '301', 'M', '1980-03-14', 'Senior Engineer',
 '2024-01-01', '2024-12-31', '2015-07-01', '1899-12-30'),
('IR8AYA2025', 2024, 1002, 3, 4, 'NRIC', 'T0123456G', 'Nur Aisyah binte Rahman', '', '301', 'F', '2001-08-22', 'Accounts Executive',
 '2024-01-01', '2024-12-31', '2023-04-03', '1899-12-30'),
('IR8AYA2025', 2024, 1003, 3, 4, 'NRIC', 'S7512345J', 'Rajesh s/o Krishnan', '', '301', 'M', '1975-11-05', 'Sales Manager',
 '2024-01-01', '2024-12-31', '2011-09-12', '1899-12-30'),
-- A permanent resident since 15 June 2022 (recent SPR for basis year 2024).
('IR8AYA2025', 2024, 1004, 3, 4, 'NRIC', 'S8856781A', 'Chen Xiaoling', '', '336', 'F', '1988-05-17', 'Data Analyst',
 '2024-01-01', '2024-12-31', '2021-02-01', '1899-12-30'),
('IR8AYA2025', 2024, 1005, 3, 4, 'NRIC', 'S9234567Z', 'Muhammad Hafiz bin Ismail', '', '301', 'M', '1992-09-09', 'Technician',
 '2024-01-01', '2024-12-31', '2016-08-15', '1899-12-30'),
('IR8AYA2025', 2024, 1006, 3, 4, 'NRIC', 'S6912345G', 'Tan Boon Huat', '', '301', 'M', '1969-02-11', 'DIRECTOR',
 '2024-01-01', '2024-12-31', '1998-03-02', '1899-12-30'),
-- Joined during the basis year: the period starts on the joining date.
('IR8AYA2025', 2024, 1007, 3, 4, 'NRIC', 'S9912345A', 'Priya d/o Subramaniam', '', '301', 'F', '1999-06-30', 'HR Executive',
 '2024-03-18', '2024-12-31', '2024-03-18', '1899-12-30'),
-- Left during the basis year: the period ends on the cessation date.
('IR8AYA2025', 2024, 1008, 3, 4, 'NRIC', 'S7876543G', 'Wong Kah Mun', '', '301', 'F', '1978-07-30', 'Operations Manager',
 '2024-01-01', '2024-09-30', '2009-01-05', '2024-09-30'),
('IR8AYA2025', 2024, 1009, 3, 4, 'NRIC', 'S8123987H', 'Goh Siew Lan', '', '301', 'F', '1981-12-03', 'Regional Marketing Lead',
 '2024-01-01', '2024-12-31', '2012-10-01', '1899-12-30'),
('IR8AYA2025', 2024, 1010, 3, 4, 'FIN', 'F7654321Q', 'David Anthony Fernandez', '', '304', 'M', '1976-04-21', 'Chief Technology Officer',
 '2024-01-01', '2024-12-31', '2018-01-15', '1899-12-30'),
-- Left in 2023: on the current return of year-end year 2023 only (the 2023
-- rows below are made from these).
('IR8AYA2025', 2024, 1011, 3, 4, 'NRIC', 'S8345612D', 'Siti Nurhaliza binte Osman', '', '301', 'F', '1983-01-19', 'Customer Service Officer',
 '2023-01-01', '2023-06-30', '2014-05-05', '2023-06-30'),
('IR8AYA2025', 2024, 1012, 3, 4, 'NRIC', 'S8990123E', 'Ho Jun Wei', 'Kenneth', '301', 'M', '1989-10-08', 'Software Engineer',
 '2023-01-01', '2023-11-15', '2020-02-03', '2023-11-15');

INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, ContratualBonus, NonContratualBonus, BonusDeclared,
                  Commission, CommissionFrom, CommissionTo, CommissionStatus, Transport, Entertainment,
                  OtherAllowance, OtherAllowanceAmt, TotalStockGainsAfter, BenefitsInKind, EECPFPension,
                  Donation, IR8SIndicator) VALUES
(1001, 2024, 'CurIR8A', 84000.48, 7000.00, 3500.99, '2024-11-29',
 1200.75, '2024-01-01', '2024-12-31', 'CommissionOther', 1800.40, 600.00,
 300.25, 150.10, 2450.00, 5400.00, 18420.00, 36.00, 'Y');

INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, ContratualBonus, Transport, EECPFPension, Donation, MOSQFund) VALUES
(1002, 2024, 'CurIR8A', 42000.00, 3500.00, 1200.00, 9100.00, 10.01, 60.00);

INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, ContratualBonus, Commission, CommissionFrom, CommissionTo,
                  CommissionStatus, Entertainment, EECPFPension) VALUES
(1003, 2024, 'CurIR8A', 96000.00, 8000.00, -350.00, '2024-01-01', '2024-12-31', 'CommissionOther', 2400.00, 17920.00);

INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, ContratualBonus, BenefitsInKind, EECPFPension, IR8SIndicator) VALUES
(1004, 2024, 'CurIR8A', 60000.00, 5000.00, 31800.00, 13200.00, 'Y');

INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, ContratualBonus, EECPFPension, MOSQFund, IR8SIndicator) VALUES
(1005, 2024, 'CurIR8A', 38400.00, 3200.00, 8320.00, 48.00, 'Y');

INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, ContratualBonus, DirectorFee, DirFeeApproved, IRASSection45,
                  TotalStockGainsBef, TotalStockGainsAfter, BenefitsInKind, EECPFPension, IR8SIndicator) VALUES
(1006, 2024, 'CurIR8A', 120000.00, 10000.00, 25000.00, '2023-12-15', 'N',
 9000.00, 13600.00, 13450.00, 18320.00, 'Y');

INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, EECPFPension) VALUES
(1007, 2024, 'CurIR8A', 35916.13, 7183.00);

INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, Gratuity, LumpSumCompensation, CompensationApprovedDate,
                  RetirementDetails, EECPFPension) VALUES
(1008, 2024, 'CurIR8A', 67500.00, 5000.00, 20000.00, '2024-09-15', 'Gratuity for 15 years of service', 12240.00);

-- Tax partly borne by the employer; overseas cost-of-living allowance remitted.
INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, IncomeBorneStatus, TaxBorneByER, ExemptIncomeType,
                  RemissionAmt, EECPFPension) VALUES
(1009, 2024, 'CurIR8A', 70000.00, 'Partial', 3200.00, 'IncomeTypeOCLA', 4800.00, 14000.00);

-- A fixed amount of the tax is borne by the employee.
INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, ContratualBonus, IncomeBorneStatus, FixedAmtBorneByEE,
                  TotalStockGainsBef, TotalStockGainsAfter, Insurance) VALUES
(1010, 2024, 'CurIR8A', 150000.00, 12500.00, 'Fixed', 2500.00, 1500.00, 1100.00, 480.00);


------------------------------------------------------------------------------
-- IR8AYA2025: thirty more employees of 2024, generated. Every tenth from the
-- seventh joined during 2024; every fifth files an IR8S; every sixth has
-- Appendix 8A benefits.
------------------------------------------------------------------------------
CREATE TEMP TABLE BulkPeople (n INTEGER PRIMARY KEY, Name TEXT, Gender TEXT, IdType TEXT, TaxNo TEXT, Nationality TEXT);
INSERT INTO BulkPeople VALUES
    ( 1, 'Ang Choon Seng', 'M', 'NRIC', 'S8029772F', '301'),
    ( 2, 'Farah binte Ahmad', 'F', 'NRIC', 'S8295319A', '301'),
    ( 3, 'Chua Li Ting', 'F', 'NRIC', 'S7119494I', '301'),
    ( 4, 'Daniel Yeo Wen Hao', 'M', 'NRIC', 'S9680239J', '301'),
    ( 5, 'Eng Kok Wah', 'M', 'NRIC', 'S7357931G', '301'),
    ( 6, 'Fong Pei Shan', 'F', 'NRIC', 'S8817602B', '301'),
    ( 7, 'Gan Yong Sheng', 'M', 'FIN', 'G9256679Q', '336'),
    ( 8, 'Heng Mei Xuan', 'F', 'NRIC', 'S7614914C', '301'),
    ( 9, 'Iskandar bin Yusof', 'M', 'NRIC', 'S7266838C', '301'),
    (10, 'Joanne Koh Hui Min', 'F', 'NRIC', 'S8319156B', '301'),
    (11, 'Kwek Jia Hui', 'F', 'NRIC', 'S7721889J', '301'),
    (12, 'Leong Wai Keat', 'M', 'NRIC', 'S8765642Z', '301'),
    (13, 'Mohamed Rizal bin Said', 'M', 'NRIC', 'S7184115D', '301'),
    (14, 'Ng Shu Qi', 'F', 'FIN', 'G6038526U', '304'),
    (15, 'Ong Teck Chye', 'M', 'NRIC', 'S7792657G', '301'),
    (16, 'Poh Ying Ying', 'F', 'NRIC', 'S9086414I', '301'),
    (17, 'Quek Boon Kiat', 'M', 'NRIC', 'S7185642I', '301'),
    (18, 'Ravi s/o Muthusamy', 'M', 'NRIC', 'S8861993E', '301'),
    (19, 'Sim Hui Ling', 'F', 'NRIC', 'S7138977D', '301'),
    (20, 'Teo Jun Jie', 'M', 'NRIC', 'S7182963D', '301'),
    (21, 'Umar bin Abdullah', 'M', 'FIN', 'G6117151M', '336'),
    (22, 'Vanessa Lee Xin Yi', 'F', 'NRIC', 'S7964937F', '301'),
    (23, 'Wee Kian Meng', 'M', 'NRIC', 'S7480868I', '301'),
    (24, 'Xu Mingjie', 'M', 'NRIC', 'S7384830Z', '301'),
    (25, 'Yap Siew Ching', 'F', 'NRIC', 'S7983434C', '301'),
    (26, 'Zainab binte Hassan', 'F', 'NRIC', 'S9699391I', '301'),
    (27, 'Aw Guo Liang', 'M', 'NRIC', 'S7523507J', '301'),
    (28, 'Balakrishnan Arun', 'M', 'FIN', 'G9878815N', '304'),
    (29, 'Cheong Ka Yan', 'F', 'NRIC', 'S8893743J', '301'),
    (30, 'Dorairaj Kavitha', 'F', 'NRIC', 'S7658810D', '301');

-- Monthly salary, joining date and months worked in 2024 of each of them.
CREATE TEMP TABLE BulkPay AS
WITH RECURSIVE Base AS (
    SELECT n, 3000 + n * 187.50 AS Monthly,
           CASE WHEN n % 10 = 7 THEN date('2024-01-01', '+' || (n * 11) || ' days')
                ELSE date('2005-01-03', '+' || (n * 131) || ' days') END AS Joined
    FROM BulkPeople
)
SELECT n, Monthly, Joined,
       CASE WHEN Joined >= '2024-01-01' THEN 13 - CAST(strftime('%m', Joined) AS INTEGER) ELSE 12 END AS Months
FROM Base;

INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId, SupYEGlobalId, PayeeIDType, TaxNo,
                        EEName1, EEName2, IRASNationalityCode, Gender, DOB, Designation,
                        PaymentFrom, PaymentTo, Commencement, Cessation)
SELECT 'IR8AYA2025', 2024, 1100 + p.n, 3, 4, p.IdType, p.TaxNo, p.Name, '', p.Nationality, p.Gender,
       CASE WHEN p.IdType = 'NRIC' THEN date('19' || substr(p.TaxNo, 2, 2) || '-01-01', '+' || (p.n * 37 % 360) || ' days')
            ELSE date('1985-01-01', '+' || (p.n * 53) || ' days') END,
       CASE p.n % 4 WHEN 0 THEN 'Machinist' WHEN 1 THEN 'Production Supervisor'
                    WHEN 2 THEN 'Quality Inspector' ELSE 'Logistics Coordinator' END,
       CASE WHEN b.Joined >= '2024-01-01' THEN b.Joined ELSE '2024-01-01' END,
       '2024-12-31', b.Joined, '1899-12-30'
FROM BulkPeople p JOIN BulkPay b ON b.n = p.n;

INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, ContratualBonus, NonContratualBonus, BonusDeclared,
                  Transport, BenefitsInKind, EECPFPension, Donation, MOSQFund, IR8SIndicator)
SELECT 1100 + p.n, 2024, 'CurIR8A',
       b.Monthly * b.Months,
       CASE WHEN b.Months = 12 THEN b.Monthly ELSE 0 END,
       CASE WHEN p.n % 4 = 0 THEN round(b.Monthly * 0.5, 2) ELSE 0 END,
       CASE WHEN p.n % 4 = 0 THEN '2024-12-06' ELSE '1899-12-30' END,
       CASE WHEN p.n % 3 = 0 THEN 1200.00 ELSE 0 END,
       CASE WHEN p.n % 6 = 0 THEN 2100.00 ELSE 0 END,
       CASE WHEN p.IdType = 'NRIC'
            THEN round((min(b.Monthly, 6800) * b.Months + CASE WHEN b.Months = 12 THEN b.Monthly ELSE 0 END
                        + CASE WHEN p.n % 4 = 0 THEN round(b.Monthly * 0.5, 2) ELSE 0 END) * 0.20, 0)
            ELSE 0 END,
       CASE WHEN p.n % 5 = 0 THEN 24.00 ELSE 0 END,
       CASE WHEN p.IdType = 'NRIC' AND (p.Name LIKE '% bin %' OR p.Name LIKE '% binte %') THEN 42.00 ELSE 0 END,
       CASE WHEN p.n % 5 = 0 THEN 'Y' ELSE 'N' END
FROM BulkPeople p JOIN BulkPay b ON b.n = p.n;

------------------------------------------------------------------------------
-- IR8AYA2025: IR8S of 2024. Section A months come from the monthly pay; the
-- thirteenth row (the total) is added for every IR8S person at the end.
------------------------------------------------------------------------------
INSERT INTO IR8S (PersonalSysId, YEYear, DateOfPRGranted, ApprovalForFullCPF, CPFOverseasObligatory, ERVolCPF, EEVolCPF,
                  FlagExcessCPF, IR8SIndicator) VALUES
(1001, 2024, NULL,         '',  '',  0,      0, 'Y', 'Y'),
-- A recent permanent resident with the CPF Board's approval for full rates.
(1004, 2024, '2022-06-15', 'Y', '',  0,      0, 'Y', 'Y'),
(1005, 2024, NULL,         '',  'N', 0,      0, 'Y', 'Y'),
(1006, 2024, NULL,         '',  '',  1000.00, 0, 'Y', 'Y');

INSERT INTO IR8S (PersonalSysId, YEYear, DateOfPRGranted, ApprovalForFullCPF, FlagExcessCPF, IR8SIndicator, EEVolCPF)
SELECT 1100 + n, 2024, NULL, '', 'Y', 'Y', CASE WHEN n = 10 THEN 250.00 ELSE 0 END
FROM BulkPeople WHERE n % 5 = 0;

-- Monthly ordinary wages and CPF (ordinary wage ceiling 6800; employer 17%,
-- employee 20%); the additional wages (bonuses) fall in December.
CREATE TEMP TABLE IR8SPay (PersonalSysId INTEGER, Monthly REAL, FirstMonth INTEGER, December REAL);
INSERT INTO IR8SPay VALUES (1001, 7000.04, 1, 10500.99), (1004, 5000.00, 1, 5000.00),
                           (1005, 3200.00, 1, 3200.00), (1006, 10000.00, 1, 10000.00);
INSERT INTO IR8SPay
SELECT 1100 + b.n, b.Monthly, 13 - b.Months,
       CASE WHEN b.Months = 12 THEN b.Monthly ELSE 0 END + CASE WHEN b.n % 4 = 0 THEN round(b.Monthly * 0.5, 2) ELSE 0 END
FROM BulkPay b WHERE b.n % 5 = 0;

INSERT INTO IR8SA (PersonalSysId, YEYear, IR8SOrder, IR8SMonth, OrdWages, ContriOrdERCPF, ContriOrdEECPF,
                   AddWages, ContriAddERCPF, ContriAddEECPF)
WITH RECURSIVE Months(m) AS (SELECT 1 UNION ALL SELECT m + 1 FROM Months WHERE m < 12)
SELECT p.PersonalSysId, 2024, m.m,
       substr('JanFebMarAprMayJunJulAugSepOctNovDec', m.m * 3 - 2, 3),
       CASE WHEN m.m >= p.FirstMonth THEN p.Monthly ELSE 0 END,
       CASE WHEN m.m >= p.FirstMonth THEN round(min(p.Monthly, 6800) * 0.17, 2) ELSE 0 END,
       CASE WHEN m.m >= p.FirstMonth THEN round(min(p.Monthly, 6800) * 0.20, 2) ELSE 0 END,
       CASE WHEN m.m = 12 THEN p.December ELSE 0 END,
       CASE WHEN m.m = 12 THEN round(p.December * 0.17, 0) ELSE 0 END,
       CASE WHEN m.m = 12 THEN round(p.December * 0.20, 0) ELSE 0 END
FROM IR8SPay p CROSS JOIN Months m;

-- Section B: 1001 one refund, 1004 none, 1005 two, 1006 three.
INSERT INTO IR8SC (PersonalSysId, YEYear, RefundSysId, AddWageAmt, AddWageFrom, AddWageTo, AddWagePaidDate,
                   ERContribution, ERInterest, ERDate, EEContribution, EEInterest, EEDate) VALUES
(1001, 2024, 1, 3500.99, '2024-01-01', '2024-12-31', '2024-12-20', 120.00, 1.25, '2024-12-28', 140.00, 0,    '2024-12-28'),
(1005, 2024, 1, 1600.00, '2024-01-01', '2024-06-30', '2024-06-28',  85.00, 0,    '2024-07-10', 100.00, 0,    '2024-07-10'),
(1005, 2024, 2, 1600.00, '2024-07-01', '2024-12-31', '2024-12-27',  85.00, 0,    '2025-01-10', 100.00, 0,    '2025-01-10'),
(1006, 2024, 1, 4000.00, '2024-01-01', '2024-03-31', '2024-03-28', 200.00, 2.10, '2024-04-15', 240.00, 2.52, '2024-04-15'),
(1006, 2024, 2, 3000.00, '2024-04-01', '2024-06-30', '2024-06-28', 150.00, 0,    '2024-07-15', 180.00, 0,    '2024-07-15'),
(1006, 2024, 3, 3000.00, '2024-07-01', '2024-12-31', '2024-12-20', 150.00, 0,    '2025-01-15', 180.00, 0,    '2025-01-15');

------------------------------------------------------------------------------
-- IR8AYA2025: Appendix 8A of 2024. Each total equals the employee's IR8A
-- BenefitsInKind.
------------------------------------------------------------------------------
INSERT INTO A8A (PersonalSysId, YEYear, ResidenceAddress1, ResidenceAddress2, ResidenceAddress3,
                 OccupationFrom, OccupationTo, OccupationDays, NoOfEESharingQtr, OHQStatus,
                 Education, Clubs, CarBenefit, TotalBenefitInKind) VALUES
-- Hotel stay (Section 3) 2400.00 + education 3000.00 = 5400.00; no quarters.
(1001, 2024, '', '', '', '1899-12-30', '1899-12-30', 0, 1, 'N', 3000.00, 0, 0, 5400.00),
-- Quarters all of 2024, a leap year: 366 days. Residence 30000.00 + utilities 1800.00.
(1004, 2024, 'Blk 123 Toa Payoh Lorong 1', '#08-456', 'Singapore 310123',
 '2024-01-01', '2024-12-31', 366, 1, 'N', 0, 0, 0, 31800.00),
-- Car 9850.00 + club 3600.00; no Section 2 or 3 row.
(1006, 2024, '', '', '', '1899-12-30', '1899-12-30', 0, 1, '', 0, 3600.00, 9850.00, 13450.00);

INSERT INTO A8A (PersonalSysId, YEYear, OccupationDays, NoOfEESharingQtr, OHQStatus, Holidays, Clubs, TotalBenefitInKind)
SELECT 1100 + n, 2024, 0, 1, 'N', 1500.00, 600.00, 2100.00 FROM BulkPeople WHERE n % 6 = 0;

INSERT INTO A8AS2S3 (PersonalSysId, YEYear, A8AS2S3Order, AnnualValue, FurnishedStatus, FurnitureFittingsValue,
                     RentPaidToLandlord, ResidenceValue, RentPaidByEmployee, TotalTaxableResidenceValue,
                     UtilityTelPagerValue, Driver, ServantGardener, TotalValueofUtilities,
                     HotelAccommodation, HotelAmtPaidByEmployee, TotalHotelAccommodation) VALUES
(1001, 2024, 1, 0, '', 0, 0, 0, 0, 0, 0, 0, 0, 0, 2400.00, 0, 2400.00),
-- Fully furnished: furniture at half the annual value.
(1004, 2024, 1, 24000.00, 'Fully Furnished', 12000.00, 0, 36000.00, 6000.00, 30000.00,
 1800.00, 0, 0, 1800.00, 0, 0, 0);

------------------------------------------------------------------------------
-- IR8AYA2025: Appendix 8B of 2024. Row amounts as an Original file computes
-- them (E exercise price, G value at grant, X value at exercise, N shares):
-- Section A gains = (X - E) x N, counted as not qualifying too; Sections B-D
-- exempt = (X - G) x N, not qualifying = (G - E) x N, gains = the two added.
-- "Bef" is the part from ESOP plans granted before 1 January 2003.
------------------------------------------------------------------------------
INSERT INTO A8BRecord (PersonalSysId, YEYear, A8BRecordSysId, StockOptionType, CompanyIDType, RCBNo, CompanyName,
                       TypePlanGranted, DateStockGranted, DateExerciseStock, ExercisePriceStock, MktValueStockGrant,
                       MktValueExerciseStock, SharesAcquired, EESOPTaxExempt, CSOPTaxExempt, NSOPTaxExempt,
                       NoTaxExempt, StockGains, DateIncorporation) VALUES
-- 1001, A: (2.18 - 1.20) x 2500 = 2450.00, after 2003.
(1001, 2024, 1, 'ESOP', 'CompanyROC', '201912345K', 'Lion City Precision Engineering Pte Ltd',
 'ESOP', '2021-03-01', '2024-05-15', 1.20, 0, 2.18, 2500, 0, 0, 0, 2450.00, 2450.00, '1899-12-30'),
-- 1006, A: (1.60 - 0.85) x 4000 = 3000.00 before 2003; ESOW (3.10 - 0) x 1000 = 3100.00 after.
(1006, 2024, 1, 'ESOP', 'CompanyROC', '199704512M', 'Straits Precision Holdings Ltd',
 'ESOP', '2001-08-01', '2024-02-20', 0.85, 0, 1.60, 4000, 0, 0, 0, 3000.00, 3000.00, '1899-12-30'),
(1006, 2024, 2, 'ESOP', 'CompanyROC', '201912345K', 'Lion City Precision Engineering Pte Ltd',
 'ESOW', '2018-05-01', '2024-04-01', 0, 0, 3.10, 1000, 0, 0, 0, 3100.00, 3100.00, '1899-12-30'),
-- 1006, B (EEEBR): ESOP 2001: exempt (1.40 - 0.80) x 5000 = 3000.00, not qualifying
-- (0.80 - 0.50) x 5000 = 1500.00, gains 4500.00, before 2003.
-- ESOW 2015: exempt (2.25 - 1.50) x 2000 = 1500.00, not qualifying (1.50 - 1.00) x 2000 = 1000.00,
-- gains 2500.00, after.
(1006, 2024, 3, 'EESOP', 'CompanyROC', '199704512M', 'Straits Precision Holdings Ltd',
 'ESOP', '2001-02-01', '2023-12-15', 0.50, 0.80, 1.40, 5000, 3000.00, 0, 0, 1500.00, 4500.00, '1899-12-30'),
(1006, 2024, 4, 'EESOP', 'CompanyROC', '201912345K', 'Lion City Precision Engineering Pte Ltd',
 'ESOW', '2015-09-01', '2023-10-02', 1.00, 1.50, 2.25, 2000, 1500.00, 0, 0, 1000.00, 2500.00, '1899-12-30'),
-- 1006, C (CEEBR): ESOP 2002: exempt (3.00 - 2.40) x 1500 = 900.00, not qualifying
-- (2.40 - 2.00) x 1500 = 600.00, gains 1500.00, before 2003.
(1006, 2024, 5, 'CSOP', 'CompanyROC', '199704512M', 'Straits Precision Holdings Ltd',
 'ESOP', '2002-06-03', '2024-03-11', 2.00, 2.40, 3.00, 1500, 0, 900.00, 0, 600.00, 1500.00, '1899-12-30'),
-- 1006, D (ERIS start-up, incorporated 1 May 2009): ESOP 2010: exempt (0.90 - 0.30) x 10000
-- = 6000.00, not qualifying (0.30 - 0.10) x 10000 = 2000.00, gains 8000.00, after.
(1006, 2024, 6, 'NSOP', 'CompanyROC', '200908877H', 'Bright Spark Robotics Pte Ltd',
 'ESOP', '2010-03-15', '2024-07-01', 0.10, 0.30, 0.90, 10000, 0, 0, 6000.00, 2000.00, 8000.00, '2009-05-01'),
-- 1010, A: 2002 plan (1.55 - 1.05) x 3000 = 1500.00 before; 2019 plan (2.95 - 2.40) x 2000 = 1100.00 after.
(1010, 2024, 1, 'ESOP', 'CompanyROC', '199704512M', 'Straits Precision Holdings Ltd',
 'ESOP', '2002-11-20', '2024-08-08', 1.05, 0, 1.55, 3000, 0, 0, 0, 1500.00, 1500.00, '1899-12-30'),
(1010, 2024, 2, 'ESOP', 'CompanyROC', '199704512M', 'Straits Precision Holdings Ltd',
 'ESOP', '2019-06-10', '2024-08-08', 2.40, 0, 2.95, 2000, 0, 0, 0, 1100.00, 1100.00, '1899-12-30');

-- Employee totals: the full total of each section and its part before 2003.
--   1006: A not qualifying 6100 (3000 before), gains 6100 (3000 before);
--         B exempt 4500 (3000), not qualifying 2500 (1500), gains 7000 (4500);
--         C exempt 900 (900), not qualifying 600 (600), gains 1500 (1500);
--         D exempt 6000 (0), not qualifying 2000 (0), gains 8000 (0);
--         all gains 6100 + 7000 + 1500 + 8000 = 22600.
INSERT INTO A8B (PersonalSysId, YEYear,
                 TotalESOPNoTaxExempt, TotalESOPNoTaxExemptBef, TotalESOPStockGains, TotalESOPStockGainsBef,
                 TotalEESOPTaxExempt, TotalEESOPTaxExemptBef, TotalEESOPNoTaxExempt, TotalEESOPNoTaxExemptBef,
                 TotalEESOPStockGains, TotalEESOPStockGainsBef,
                 TotalCSOPTaxExempt, TotalCSOPTaxExemptBef, TotalCSOPNoTaxExempt, TotalCSOPNoTaxExemptBef,
                 TotalCSOPStockGains, TotalCSOPStockGainsBef,
                 TotalNSOPTaxExempt, TotalNSOPTaxExemptBef, TotalNSOPNoTaxExempt, TotalNSOPNoTaxExemptBef,
                 TotalNSOPStockGains, TotalNSOPStockGainsBef, GrandTotalStockGains) VALUES
(1001, 2024, 2450.00, 0, 2450.00, 0,  0, 0, 0, 0, 0, 0,  0, 0, 0, 0, 0, 0,  0, 0, 0, 0, 0, 0,  2450.00),
(1006, 2024, 6100.00, 3000.00, 6100.00, 3000.00,
             4500.00, 3000.00, 2500.00, 1500.00, 7000.00, 4500.00,
             900.00, 900.00, 600.00, 600.00, 1500.00, 1500.00,
             6000.00, 0, 2000.00, 0, 8000.00, 0,  22600.00),
(1010, 2024, 2600.00, 1500.00, 2600.00, 1500.00,  0, 0, 0, 0, 0, 0,  0, 0, 0, 0, 0, 0,  0, 0, 0, 0, 0, 0,  2600.00);

------------------------------------------------------------------------------
-- IR8AYA2025: year-end year 2023 (basis year 2023), the year before: the same
-- people less those who joined in 2024, on 96% of their 2024 pay, and the
-- two who left during 2023.
------------------------------------------------------------------------------
INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId, SupYEGlobalId, PayeeIDType, TaxNo,
                        EEName1, EEName2, IRASNationalityCode, Gender, DOB, Designation,
                        PaymentFrom, PaymentTo, Commencement, Cessation)
SELECT YEEmployerId, 2023, PersonalSysId, 1, 2, PayeeIDType, TaxNo, EEName1, EEName2, IRASNationalityCode, Gender, DOB,
       Designation,
       CASE WHEN Commencement > '2023-01-01' THEN Commencement ELSE '2023-01-01' END,
       CASE WHEN Cessation BETWEEN '2023-01-01' AND '2023-12-31' THEN Cessation ELSE '2023-12-31' END,
       Commencement,
       CASE WHEN Cessation BETWEEN '2023-01-01' AND '2023-12-31' THEN Cessation ELSE '1899-12-30' END
FROM YEEmployee
WHERE YEEmployerId = 'IR8AYA2025' AND YEYear = 2024 AND Commencement < '2024-01-01'
  AND PersonalSysId <= 1120;

INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, ContratualBonus, NonContratualBonus, BonusDeclared,
                  DirectorFee, DirFeeApproved, Commission, CommissionFrom, CommissionTo, CommissionStatus,
                  Transport, Entertainment, OtherAllowance, OtherAllowanceAmt, IncomeBorneStatus, TaxBorneByER,
                  FixedAmtBorneByEE, ExemptIncomeType, RemissionAmt, EECPFPension, Donation, MOSQFund, Insurance)
SELECT PersonalSysId, 2023, 'CurIR8A', round(GrossTotal * 0.96, 2), round(ContratualBonus * 0.96, 2),
       round(NonContratualBonus * 0.96, 2),
       CASE WHEN BonusDeclared = '1899-12-30' THEN BonusDeclared ELSE date(BonusDeclared, '-1 year') END,
       round(DirectorFee * 0.96, 2),
       CASE WHEN DirFeeApproved = '1899-12-30' THEN DirFeeApproved ELSE date(DirFeeApproved, '-1 year') END,
       Commission,
       CASE WHEN CommissionFrom = '1899-12-30' THEN CommissionFrom ELSE date(CommissionFrom, '-1 year') END,
       CASE WHEN CommissionTo = '1899-12-30' THEN CommissionTo ELSE date(CommissionTo, '-1 year') END,
       CommissionStatus, Transport, Entertainment, OtherAllowance, OtherAllowanceAmt, IncomeBorneStatus,
       round(TaxBorneByER * 0.96, 2), FixedAmtBorneByEE, ExemptIncomeType, RemissionAmt,
       round(EECPFPension * 0.96, 0), Donation, MOSQFund, Insurance
FROM IR8A
WHERE YEYear = 2024 AND IR8AType = 'CurIR8A'
  AND PersonalSysId IN (SELECT PersonalSysId FROM YEEmployee WHERE YEEmployerId = 'IR8AYA2025' AND YEYear = 2023);

INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, EECPFPension) VALUES
(1011, 2023, 'CurIR8A', 18000.00, 3600.00),
(1012, 2023, 'CurIR8A', 60375.00, 12075.00);

-- The 2023 current return as submitted (copy under 92023), and the copy it
-- replaced (backup under 82023) of the first five.
INSERT INTO YEEmployee SELECT YEEmployerId, 92023, PersonalSysId, CurrentYEGlobalId, SupYEGlobalId, PayeeIDType, TaxNo,
       EEName1, EEName2, IRASNationalityCode, Gender, DOB, Designation, PaymentFrom, PaymentTo, Commencement, Cessation
FROM YEEmployee WHERE YEEmployerId = 'IR8AYA2025' AND YEYear = 2023;
INSERT INTO YEEmployee SELECT YEEmployerId, 82023, PersonalSysId, CurrentYEGlobalId, SupYEGlobalId, PayeeIDType, TaxNo,
       EEName1, EEName2, IRASNationalityCode, Gender, DOB, Designation, PaymentFrom, PaymentTo, Commencement, Cessation
FROM YEEmployee WHERE YEEmployerId = 'IR8AYA2025' AND YEYear = 2023 AND PersonalSysId <= 1005;

CREATE TEMP TABLE CopyIR8A AS SELECT * FROM IR8A WHERE YEYear = 2023 AND IR8AType = 'CurIR8A';
UPDATE CopyIR8A SET YEYear = 92023;
INSERT INTO IR8A SELECT * FROM CopyIR8A;
UPDATE CopyIR8A SET YEYear = 82023 WHERE PersonalSysId <= 1005;
INSERT INTO IR8A SELECT * FROM CopyIR8A WHERE YEYear = 82023;
DROP TABLE CopyIR8A;

------------------------------------------------------------------------------
-- IR8AYA2025: the supplementary IR8A of year-end year 2023, for basis year
-- 2022. Two people who left during 2022 were paid in 2023 for 2022: arrears
-- of salary and a bonus declared late in 2022. Their 2022 rows hold the
-- cessation dates that the supplementary query reads for the basis year.
-- (The clean employer's supplementary rows of year-end year 2024, made for
-- its "All" run for 2024, are in sample_a8b.sql.)
------------------------------------------------------------------------------
INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId, SupYEGlobalId, PayeeIDType, TaxNo,
                        EEName1, EEName2, IRASNationalityCode, Gender, DOB, Designation,
                        PaymentFrom, PaymentTo, Commencement, Cessation) VALUES
('IR8AYA2025', 2022, 1013, 5, 6, 'NRIC', 'S8567231B', 'Tan Mei Ling', '', '301', 'F', '1985-04-12',
 'Purchasing Officer', '2022-01-01', '2022-06-30', '2014-05-05', '2022-06-30'),
('IR8AYA2025', 2022, 1014, 5, 6, 'NRIC', 'S8234519C', 'Ong Wei Ming', '', '301', 'M', '1982-02-27',
 'Quality Engineer', '2022-01-01', '2022-11-15', '2020-02-03', '2022-11-15'),
('IR8AYA2025', 2023, 1013, 1, 2, 'NRIC', 'S8567231B', 'Tan Mei Ling', '', '301', 'F', '1985-04-12',
 'Purchasing Officer', '2022-01-01', '2022-06-30', '2014-05-05', '2022-06-30'),
('IR8AYA2025', 2023, 1014, 1, 2, 'NRIC', 'S8234519C', 'Ong Wei Ming', '', '301', 'M', '1982-02-27',
 'Quality Engineer', '2022-01-01', '2022-11-15', '2020-02-03', '2022-11-15');

INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, NonContratualBonus, BonusDeclared, EECPFPension) VALUES
(1013, 2023, 'SupIR8A', 0, 1500.00, '2022-12-20', 300.00),
(1014, 2023, 'SupIR8A', 2300.00, 0, '1899-12-30', 460.00);

------------------------------------------------------------------------------
-- ERRCO: records that break the checks, year-end year 2024. Apart from what a
-- row's comment names, its values are valid.
------------------------------------------------------------------------------
INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId, SupYEGlobalId, PayeeIDType, TaxNo,
                        EEName1, EEName2, IRASNationalityCode, Gender, DOB, Designation,
                        PaymentFrom, PaymentTo, Commencement, Cessation) VALUES
-- id type 'ForeignID' is no keyword, and the id number is blank
('ERRCO', 2024, 2001, 3, 4, 'ForeignID', '', 'Lau Kim Hock', '', '301', 'M', '1977-03-03', 'Storekeeper',
 '2024-01-01', '2024-12-31', '2012-05-02', '1899-12-30'),
-- name line 1 is blank; the nationality code is blank
('ERRCO', 2024, 2002, 3, 4, 'NRIC', 'S9012876J', '', 'Kumar', '', 'M', '1990-05-14', 'Driver',
 '2024-01-01', '2024-12-31', '2017-06-01', '1899-12-30'),
-- nationality 300 was withdrawn by IRAS; sex 'X' is neither F nor M
('ERRCO', 2024, 2003, 3, 4, 'NRIC', 'S8733105I', 'Toh Soo Kheng', '', '300', 'X', '1987-02-27', 'Clerk',
 '2024-01-01', '2024-12-31', '2015-01-05', '1899-12-30'),
-- period of payment without a from date and without a to date
('ERRCO', 2024, 2004, 3, 4, 'NRIC', 'S7006542H', 'Low Chin Huat', '', '301', 'M', '1970-10-10', 'Cashier',
 '1899-12-30', '1899-12-30', '2001-03-01', '1899-12-30'),
-- paid from 1 March although employed since 2023: must start on 1 January
('ERRCO', 2024, 2005, 3, 4, 'NRIC', 'S8566120E', 'Pang Hui Wen', '', '301', 'F', '1985-11-30', 'Receptionist',
 '2024-03-01', '2024-12-31', '2023-03-01', '1899-12-30'),
-- period starts on the commencement date, which is not in the basis year
('ERRCO', 2024, 2006, 3, 4, 'NRIC', 'S8012764B', 'Seah Wei Lun', '', '301', 'M', '1980-01-25', 'Buyer',
 '2023-07-01', '2024-12-31', '2023-07-01', '1899-12-30'),
-- paid to 30 November with no cessation: must end on 31 December
('ERRCO', 2024, 2007, 3, 4, 'NRIC', 'S9123001A', 'Kang Li Fen', '', '301', 'F', '1991-04-04', 'Designer',
 '2024-01-01', '2024-11-30', '2019-09-09', '1899-12-30'),
-- period ends on a cessation date after the basis year (which also fails the
-- cessation year check)
('ERRCO', 2024, 2008, 3, 4, 'NRIC', 'S7745123D', 'Loh Keng Siong', '', '301', 'M', '1977-12-12', 'Foreman',
 '2024-01-01', '2025-01-31', '2008-02-18', '2025-01-31'),
-- period from 1 June to 31 May: the from date is not earlier than the to date
('ERRCO', 2024, 2009, 3, 4, 'NRIC', 'S8477231C', 'Yeo Pei Ling', '', '301', 'F', '1984-08-08', 'Planner',
 '2024-06-01', '2024-05-31', '2024-06-01', '2024-05-31'),
('ERRCO', 2024, 2010, 3, 4, 'NRIC', 'S8264510A', 'Chng Kok Leong', '', '301', 'M', '1982-06-16', 'Regional Manager',
 '2024-01-01', '2024-12-31', '2010-04-01', '1899-12-30'),
('ERRCO', 2024, 2011, 3, 4, 'NRIC', 'S6800123D', 'Sng Ah Moi', '', '301', 'F', '1968-09-19', 'Accountant',
 '2024-01-01', '2024-12-31', '1999-07-01', '1899-12-30'),
('ERRCO', 2024, 2012, 3, 4, 'NRIC', 'S8512555I', 'Lee Jia Wei', '', '301', 'M', '1985-03-21', 'Engineer',
 '2024-01-01', '2024-12-31', '2014-02-03', '1899-12-30'),
('ERRCO', 2024, 2013, 3, 4, 'NRIC', 'S9345678E', 'Tay Hui Ping', '', '301', 'F', '1993-07-07', 'Analyst',
 '2024-01-01', '2024-12-31', '2018-08-01', '1899-12-30'),
('ERRCO', 2024, 2014, 3, 4, 'NRIC', 'S8000111H', 'Foo Chee Meng', '', '301', 'M', '1980-02-29', 'Consultant',
 '2024-01-01', '2024-12-31', '2013-11-11', '1899-12-30'),
('ERRCO', 2024, 2015, 3, 4, 'NRIC', 'S7912300E', 'Lai Siew Hoon', '', '301', 'F', '1979-05-05', 'Secretary',
 '2024-01-01', '2024-12-31', '2004-06-14', '1899-12-30'),
('ERRCO', 2024, 2016, 3, 4, 'NRIC', 'S8601234J', 'Kok Boon Leng', '', '301', 'M', '1986-10-01', 'Chef',
 '2024-01-01', '2024-12-31', '2016-03-03', '1899-12-30'),
('ERRCO', 2024, 2017, 3, 4, 'NRIC', 'S9033333Z', 'Tham Mei Ying', '', '301', 'F', '1990-12-24', 'Sales Executive',
 '2024-01-01', '2024-12-31', '2020-01-06', '1899-12-30'),
('ERRCO', 2024, 2018, 3, 4, 'NRIC', 'S8180808B', 'Chia Wee Kiat', '', '301', 'M', '1981-08-18', 'Sales Executive',
 '2024-01-01', '2024-12-31', '2011-10-10', '1899-12-30'),
-- under cessation provisions, but without commencement and cessation dates
('ERRCO', 2024, 2019, 3, 4, 'NRIC', 'S7554321B', 'Ho Ah Kow', '', '301', 'M', '1955-04-01', 'Adviser',
 '2024-01-01', '2024-12-31', '1899-12-30', '1899-12-30'),
-- under cessation provisions, but joined on 1 January 1969, not before it
('ERRCO', 2024, 2020, 3, 4, 'NRIC', 'S5012345F', 'Ong Kim Swee', '', '301', 'M', '1950-06-06', 'Senior Adviser',
 '2024-01-01', '2024-06-30', '1969-01-01', '2024-06-30'),
-- ceased on 31 December 2023: the cessation date is not in the basis year
('ERRCO', 2024, 2021, 3, 4, 'NRIC', 'S9211223C', 'Neo Shi Min', '', '301', 'F', '1992-11-02', 'Trainer',
 '2024-01-01', '2024-12-31', '2018-04-16', '2023-12-31'),
('ERRCO', 2024, 2022, 3, 4, 'NRIC', 'S8777001Z', 'Ler Chong Beng', '', '301', 'M', '1987-07-17', 'Supervisor',
 '2024-01-01', '2024-12-31', '2015-05-18', '1899-12-30'),
('ERRCO', 2024, 2023, 3, 4, 'NRIC', 'S8655443G', 'Teh Geok Lian', '', '301', 'F', '1986-09-09', 'Director',
 '2024-01-01', '2024-12-31', '2010-01-04', '1899-12-30'),
('ERRCO', 2024, 2024, 3, 4, 'FIN', 'G5512345X', 'James Whitfield', '', '304', 'M', '1955-12-01', 'Director',
 '2024-01-01', '2024-12-31', '2006-06-01', '1899-12-30'),
('ERRCO', 2024, 2025, 3, 4, 'NRIC', 'S8244321E', 'Quah Siok Peng', '', '301', 'F', '1982-04-30', 'Manager',
 '2024-01-01', '2024-12-31', '2009-09-01', '1899-12-30'),
('ERRCO', 2024, 2026, 3, 4, 'NRIC', 'S8032323I', 'Boey Kah Heng', '', '301', 'M', '1980-10-15', 'Technician',
 '2024-01-01', '2024-12-31', '2012-12-03', '1899-12-30'),
('ERRCO', 2024, 2027, 3, 4, 'NRIC', 'S9101010J', 'Liew Su Lin', '', '301', 'F', '1991-01-10', 'Engineer',
 '2024-01-01', '2024-12-31', '2017-02-06', '1899-12-30'),
('ERRCO', 2024, 2028, 3, 4, 'NRIC', 'S8822113C', 'Wang Jianguo', '', '336', 'M', '1988-03-03', 'Researcher',
 '2024-01-01', '2024-12-31', '2019-07-01', '1899-12-30'),
('ERRCO', 2024, 2029, 3, 4, 'NRIC', 'S7690909A', 'Ramasamy Selvam', '', '301', 'M', '1976-09-09', 'Supervisor',
 '2024-01-01', '2024-12-31', '2003-08-04', '1899-12-30'),
('ERRCO', 2024, 2030, 3, 4, 'NRIC', 'S8520202B', 'Aisha binte Jaafar', '', '301', 'F', '1985-02-02', 'Officer',
 '2024-01-01', '2024-12-31', '2011-01-03', '1899-12-30'),
('ERRCO', 2024, 2031, 3, 4, 'NRIC', 'S8413131H', 'Zhang Wei', '', '336', 'M', '1984-03-13', 'Engineer',
 '2024-01-01', '2024-12-31', '2020-03-02', '1899-12-30'),
('ERRCO', 2024, 2032, 3, 4, 'NRIC', 'S8191919D', 'Koh Swee Hiang', '', '301', 'F', '1981-09-19', 'Officer',
 '2024-01-01', '2024-12-31', '2006-05-15', '1899-12-30'),
-- a known id type (NRIC) with a blank id number
('ERRCO', 2024, 2033, 3, 4, 'NRIC', '', 'Ong Bee Lian', '', '301', 'F', '1979-04-14', 'Manager',
 '2024-01-01', '2024-12-31', '2005-06-06', '1899-12-30'),
('ERRCO', 2024, 2034, 3, 4, 'NRIC', 'S8707070J', 'Tan Ah Huat', '', '301', 'M', '1987-07-07', 'Engineer',
 '2024-01-01', '2024-12-31', '2013-01-07', '1899-12-30'),
('ERRCO', 2024, 2035, 3, 4, 'NRIC', 'S8929292A', 'Lim Bee Choo', '', '301', 'F', '1989-02-09', 'Engineer',
 '2024-01-01', '2024-12-31', '2014-04-01', '1899-12-30'),
('ERRCO', 2024, 2036, 3, 4, 'NRIC', 'S7848484E', 'Ng Kok Seng', '', '301', 'M', '1978-08-04', 'Manager',
 '2024-01-01', '2024-12-31', '2002-02-02', '1899-12-30'),
('ERRCO', 2024, 2037, 3, 4, 'NRIC', 'S9050505Z', 'Chan Mei Fong', '', '301', 'F', '1990-05-05', 'Executive',
 '2024-01-01', '2024-12-31', '2016-06-01', '1899-12-30'),
-- no date of birth (Appendix 8B requires one)
('ERRCO', 2024, 2038, 3, 4, 'NRIC', 'S8363636Z', 'Goh Chok Beng', '', '301', 'M', '1899-12-30', 'Manager',
 '2024-01-01', '2024-12-31', '2011-11-01', '1899-12-30'),
('ERRCO', 2024, 2039, 3, 4, 'NRIC', 'S8282828A', 'Soh Lay Hoon', '', '301', 'F', '1982-08-28', 'Director',
 '2024-01-01', '2024-12-31', '2008-08-08', '1899-12-30'),
('ERRCO', 2024, 2040, 3, 4, 'NRIC', 'S7171717H', 'Yong Tat Meng', '', '301', 'M', '1971-07-17', 'Manager',
 '2024-01-01', '2024-12-31', '2000-10-02', '1899-12-30'),
('ERRCO', 2024, 2041, 3, 4, 'NRIC', 'S9494949A', 'Pek Hui Min', '', '301', 'F', '1994-09-04', 'Engineer',
 '2024-01-01', '2024-12-31', '2019-03-18', '1899-12-30'),
('ERRCO', 2024, 2042, 3, 4, 'NRIC', 'S8585858J', 'Tang Wai Ming', '', '301', 'M', '1985-05-08', 'Engineer',
 '2024-01-01', '2024-12-31', '2012-07-02', '1899-12-30'),
('ERRCO', 2024, 2043, 3, 4, 'NRIC', 'S7676767Z', 'Leow Siew Kim', '', '301', 'F', '1976-06-07', 'Manager',
 '2024-01-01', '2024-12-31', '2001-01-02', '1899-12-30'),
('ERRCO', 2024, 2044, 3, 4, 'FIN', 'G7373737R', 'Rohan Mehta', '', '304', 'M', '1973-03-07', 'Founder',
 '2024-01-01', '2024-12-31', '2009-06-01', '1899-12-30');

-- IR8A of 2024: a gross salary for everyone (so that each is reported), and
-- the breaking values.
INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, EECPFPension)
SELECT PersonalSysId, 2024, 'CurIR8A', 30000.00 + PersonalSysId % 100 * 250, 6000.00
FROM YEEmployee WHERE YEEmployerId = 'ERRCO' AND YEYear = 2024 AND PersonalSysId BETWEEN 2001 AND 2025;

-- exempt income type OHQ with no remission and no exempt amount
UPDATE IR8A SET ExemptIncomeType = 'IncomeTypeOHQ' WHERE PersonalSysId = 2010 AND YEYear = 2024;
-- type "not applicable" with an exempt amount (amount must be zero; the
-- indicator cannot be N when an amount is given)
UPDATE IR8A SET ExemptIncomeType = 'IncomeTypeNA', ExemptIncomeAmt = 500.00 WHERE PersonalSysId = 2011 AND YEYear = 2024;
-- tax partly borne by the employer, but no amount borne
UPDATE IR8A SET IncomeBorneStatus = 'Partial', TaxBorneByER = 0 WHERE PersonalSysId = 2012 AND YEYear = 2024;
-- tax fully borne, yet an amount borne by the employer (must be zero) and a
-- fixed amount borne by the employee (must be zero)
UPDATE IR8A SET IncomeBorneStatus = 'Full', TaxBorneByER = 1200.00, FixedAmtBorneByEE = 300.00
WHERE PersonalSysId = 2013 AND YEYear = 2024;
-- a fixed amount borne by the employee, but the amount is zero
UPDATE IR8A SET IncomeBorneStatus = 'Fixed', FixedAmtBorneByEE = 0 WHERE PersonalSysId = 2014 AND YEYear = 2024;
-- section 45 'X'; tax-borne status that is no keyword; cessation provisions
-- and IR8S indicator blank (each must be Y or N)
UPDATE IR8A SET IRASSection45 = 'X', IncomeBorneStatus = 'TaxBorneUnknown', CessationProvision = '', IR8SIndicator = ''
WHERE PersonalSysId = 2015 AND YEYear = 2024;
-- exempt income type that is no keyword
UPDATE IR8A SET ExemptIncomeType = 'IncomeTypeForeign', ExemptIncomeAmt = 800.00 WHERE PersonalSysId = 2016 AND YEYear = 2024;
-- commission paid from December 2023 to January 2025: neither date in the basis year
UPDATE IR8A SET Commission = 900.00, CommissionFrom = '2023-12-01', CommissionTo = '2025-01-31',
                CommissionStatus = 'CommissionMonthly' WHERE PersonalSysId = 2017 AND YEYear = 2024;
-- commission from October to March (from after to), and no commission type
UPDATE IR8A SET Commission = 500.00, CommissionFrom = '2024-10-01', CommissionTo = '2024-03-31',
                CommissionStatus = '' WHERE PersonalSysId = 2018 AND YEYear = 2024;
-- cessation provisions apply (dates missing on the employee row)
UPDATE IR8A SET CessationProvision = 'Y' WHERE PersonalSysId IN (2019, 2020) AND YEYear = 2024;
-- bonus declared in 2023, outside the basis year
UPDATE IR8A SET NonContratualBonus = 2000.00, BonusDeclared = '2023-12-15' WHERE PersonalSysId = 2022 AND YEYear = 2024;
-- director's fee without an approval date
UPDATE IR8A SET DirectorFee = 15000.00 WHERE PersonalSysId = 2023 AND YEYear = 2024;
-- director's fee approved two years before the basis year
UPDATE IR8A SET DirectorFee = 12000.00, DirFeeApproved = '2022-04-30' WHERE PersonalSysId = 2024 AND YEYear = 2024;
-- negative gross salary and negative lump sum (gratuity)
UPDATE IR8A SET GrossTotal = -1500.00, Gratuity = -2000.00 WHERE PersonalSysId = 2025 AND YEYear = 2024;

-- IR8S of 2024.
INSERT INTO IR8S (PersonalSysId, YEYear, DateOfPRGranted, ApprovalForFullCPF, CPFOverseasObligatory, FlagExcessCPF, IR8SIndicator) VALUES
(2001, 2024, NULL, '', '', 'Y', 'Y'),           -- id type no keyword, id number blank
(2002, 2024, NULL, '', '', 'Y', 'Y'),           -- name line 1 blank
(2026, 2024, NULL, '', '', 'Y', 'Y'),           -- 14 Section A rows
(2027, 2024, NULL, 'X', 'X', 'Y', 'Y'),         -- overseas obligation 'X'; full-CPF approval 'X'
(2028, 2024, '2023-05-01', '', '', 'Y', 'Y'),   -- PR since 2023 without a full-CPF approval indicator
(2029, 2024, NULL, '', '', 'Y', 'Y'),           -- 4 Section B rows
(2030, 2024, NULL, '', '', 'Y', 'Y'),           -- Section B occurrences break the date and amount checks
(2031, 2024, '2022-01-01', '', '', 'Y', 'Y'),   -- PR exactly on the cut-off date, no approval indicator
(2032, 2024, NULL, '', '', 'Y', 'Y');           -- Section B occurrences break the period checks

INSERT INTO IR8SA (PersonalSysId, YEYear, IR8SOrder, IR8SMonth, OrdWages, ContriOrdERCPF, ContriOrdEECPF)
WITH RECURSIVE Months(m) AS (SELECT 1 UNION ALL SELECT m + 1 FROM Months WHERE m < 12)
SELECT s.PersonalSysId, 2024, m.m, substr('JanFebMarAprMayJunJulAugSepOctNovDec', m.m * 3 - 2, 3), 2500.00, 425.00, 500.00
FROM IR8S s CROSS JOIN Months m
WHERE s.YEYear = 2024 AND s.PersonalSysId BETWEEN 2001 AND 2099;

-- Section B rows.
INSERT INTO IR8SC (PersonalSysId, YEYear, RefundSysId, AddWageAmt, AddWageFrom, AddWageTo, AddWagePaidDate,
                   ERContribution, ERDate, EEContribution, EEDate) VALUES
-- four rows: at most three are allowed
(2029, 2024, 1, 1000.00, '2024-01-01', '2024-03-31', '2024-03-29', 50.00, '2024-04-10', 60.00, '2024-04-10'),
(2029, 2024, 2, 1000.00, '2024-04-01', '2024-06-30', '2024-06-28', 50.00, '2024-07-10', 60.00, '2024-07-10'),
(2029, 2024, 3, 1000.00, '2024-07-01', '2024-09-30', '2024-09-27', 50.00, '2024-10-10', 60.00, '2024-10-10'),
(2029, 2024, 4, 1000.00, '2024-10-01', '2024-12-31', '2024-12-27', 50.00, '2025-01-10', 60.00, '2025-01-10'),
-- occurrence 1: zero additional wages although its dates are given
(2030, 2024, 1, 0,       '2024-01-01', '2024-12-31', '2024-12-31', 0,     '1899-12-30', 0,     '1899-12-30'),
-- occurrence 2: an amount without a from date and without a payment date
(2030, 2024, 2, 3000.00, '1899-12-30', '2024-12-31', '1899-12-30', 150.00, '2025-01-10', 180.00, '2025-01-10'),
-- occurrence 3: from date in 2023 and no to date
(2030, 2024, 3, 2500.00, '2023-06-01', '1899-12-30', '2024-12-20', 125.00, '2025-01-10', 150.00, '2025-01-10'),
-- occurrence 1: from September to March (from after to)
(2032, 2024, 1, 1800.00, '2024-09-01', '2024-03-31', '2025-01-15', 90.00, '2025-02-01', 108.00, '2025-02-01'),
-- occurrence 2: to date in 2025
(2032, 2024, 2, 1200.00, '2024-01-01', '2025-02-28', '2025-03-05', 60.00, '2025-03-20', 72.00, '2025-03-20');

-- Appendix 8A of 2024.
INSERT INTO A8A (PersonalSysId, YEYear, OccupationFrom, OccupationTo, OccupationDays, NoOfEESharingQtr, OHQStatus,
                 Holidays, TotalBenefitInKind) VALUES
(2001, 2024, '1899-12-30', '1899-12-30', 0, 1, 'N', 1000.00, 1000.00),  -- id type no keyword
(2002, 2024, '1899-12-30', '1899-12-30', 0, 1, 'N', 1000.00, 1000.00),  -- name line 1 blank
(2033, 2024, '1899-12-30', '1899-12-30', 0, 1, 'N', 1000.00, 1000.00),  -- id number blank
-- occupation from November 2023 to January 2025: neither date in the basis year
(2034, 2024, '2023-11-01', '2025-01-31', 366, 1, 'N', 1000.00, 1000.00),
-- occupation from September to March (from after to); 400 days is more than 366
(2035, 2024, '2024-09-01', '2024-03-31', 400, 1, 'N', 1000.00, 1000.00),
-- -5 days; OHQ status lower-case 'y'; nobody sharing the quarters
(2036, 2024, '2024-01-01', '2024-12-31', -5, 0, 'y', 1000.00, 1000.00),
-- -1 employees sharing the quarters; no benefit in kind at all
(2037, 2024, '2024-01-01', '2024-12-31', 366, -1, 'N', 0, 0);

-- Appendix 8B of 2024.
INSERT INTO A8B (PersonalSysId, YEYear, TotalESOPNoTaxExempt, TotalESOPStockGains, GrandTotalStockGains) VALUES
(2001, 2024, 1000.00, 1000.00, 1000.00),  -- id type no keyword, id number blank
(2002, 2024, 1000.00, 1000.00, 1000.00),  -- name line 1 blank, nationality blank
(2003, 2024, 1000.00, 1000.00, 1000.00),  -- nationality 300, sex 'X'
(2038, 2024, 1000.00, 1000.00, 1000.00),  -- no date of birth
(2039, 2024, 1600.00, 1600.00, 1600.00),  -- 16 Section A rows: at most 15 are allowed
(2040, 2024, 0, 0, 0),                    -- total gains zero although its one row is valid
(2041, 2024, 1000.00, 1000.00, 1000.00),  -- Section A rows, one broken check each
(2042, 2024, 0, 0, 1000.00),              -- Section B rows
(2043, 2024, 0, 0, 1000.00),              -- Section C rows
(2044, 2024, 0, 0, 1000.00);              -- Section D rows

INSERT INTO A8BRecord (PersonalSysId, YEYear, A8BRecordSysId, StockOptionType, CompanyIDType, RCBNo, CompanyName,
                       TypePlanGranted, DateStockGranted, DateExerciseStock, ExercisePriceStock,
                       MktValueExerciseStock, SharesAcquired, NoTaxExempt, StockGains)
WITH RECURSIVE Rows(r) AS (SELECT 1 UNION ALL SELECT r + 1 FROM Rows WHERE r < 16)
SELECT 2039, 2024, r, 'ESOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOP',
       '2020-01-15', '2024-06-03', 1.00, 1.10, 1000, 100.00, 100.00
FROM Rows;

INSERT INTO A8BRecord (PersonalSysId, YEYear, A8BRecordSysId, StockOptionType, CompanyIDType, RCBNo, CompanyName,
                       TypePlanGranted, DateStockGranted, DateExerciseStock, ExercisePriceStock, MktValueStockGrant,
                       MktValueExerciseStock, SharesAcquired, EESOPTaxExempt, CSOPTaxExempt, NSOPTaxExempt,
                       NoTaxExempt, StockGains, DateIncorporation) VALUES
-- valid, but the exercise price equals the value at exercise: no gain
(2040, 2024, 1, 'ESOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOP', '2020-01-15', '2024-06-03',
 1.00, 0, 1.00, 1000, 0, 0, 0, 0, 0, '1899-12-30'),
-- A1: company id type 'CompanyXYZ' is no keyword; plan type blank
(2041, 2024, 1, 'ESOP', 'CompanyXYZ', '201012345Z', 'Errata Trading Pte Ltd', '', '2020-01-15', '2024-06-03',
 1.00, 0, 1.10, 1000, 0, 0, 0, 100.00, 100.00, '1899-12-30'),
-- A2: plan type 'ESOX' is no keyword; no date of grant
(2041, 2024, 2, 'ESOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOX', '1899-12-30', '2024-06-03',
 1.00, 0, 1.10, 1000, 0, 0, 0, 100.00, 100.00, '1899-12-30'),
-- A3: granted in 2030, after the processing date; no date of exercise
(2041, 2024, 3, 'ESOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOP', '2030-01-01', '1899-12-30',
 1.00, 0, 1.10, 1000, 0, 0, 0, 100.00, 100.00, '1899-12-30'),
-- A4: exercised in 2031, after the processing date
(2041, 2024, 4, 'ESOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOP', '2020-01-15', '2031-01-01',
 1.00, 0, 1.10, 1000, 0, 0, 0, 100.00, 100.00, '1899-12-30'),
-- A5: exercised in 2019, before the grant in 2020
(2041, 2024, 5, 'ESOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOP', '2020-01-15', '2019-01-02',
 1.00, 0, 1.10, 1000, 0, 0, 0, 100.00, 100.00, '1899-12-30'),
-- A6: negative exercise price; a value at grant (must be zero in Section A);
-- negative value at exercise
(2041, 2024, 6, 'ESOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOP', '2020-01-15', '2024-06-03',
 -1.50, 2.00, -3.00, 1000, 0, 0, 0, 100.00, 100.00, '1899-12-30'),
-- A7: shares, not-qualifying amount and gains beyond their ranges
(2041, 2024, 7, 'ESOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOP', '2020-01-15', '2024-06-03',
 1.00, 0, 1.10, 10000000, 0, 0, 0, 10000000.00, 10000000.00, '1899-12-30'),
-- A8: negative gains on a positive number of shares
(2041, 2024, 8, 'ESOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOP', '2020-01-15', '2024-06-03',
 1.00, 0, 0.50, 1000, 0, 0, 0, -500.00, -500.00, '1899-12-30'),
-- B1: negative value at grant
(2042, 2024, 1, 'EESOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOP', '2020-01-15', '2023-06-03',
 1.00, -1.00, 1.10, 1000, 100.00, 0, 0, 0, 100.00, '1899-12-30'),
-- B2: ESOP granted on 31 May 2000, before 1 June 2000
(2042, 2024, 2, 'EESOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOP', '2000-05-31', '2023-06-03',
 1.00, 1.00, 1.10, 1000, 100.00, 0, 0, 0, 100.00, '1899-12-30'),
-- B3: ESOW granted on 31 December 2001, before 1 January 2002
(2042, 2024, 3, 'EESOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOW', '2001-12-31', '2023-06-03',
 1.00, 1.00, 1.10, 1000, 100.00, 0, 0, 0, 100.00, '1899-12-30'),
-- B4: granted in March 2025, after 31 December of the year-end year
(2042, 2024, 4, 'EESOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOP', '2025-03-01', '2025-03-02',
 1.00, 1.00, 1.10, 1000, 100.00, 0, 0, 0, 100.00, '1899-12-30'),
-- B5: exercised on 30 June 2024, after 31 December 2023
(2042, 2024, 5, 'EESOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOP', '2020-01-15', '2024-06-30',
 1.00, 1.00, 1.10, 1000, 100.00, 0, 0, 0, 100.00, '1899-12-30'),
-- B6: exempt amount beyond its range
(2042, 2024, 6, 'EESOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOP', '2020-01-15', '2023-06-03',
 1.00, 1.00, 1.10, 1000, 10000000.00, 0, 0, 0, 100.00, '1899-12-30'),
-- C1: ESOP granted on 31 March 2001, before 1 April 2001
(2043, 2024, 1, 'CSOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOP', '2001-03-31', '2024-06-03',
 1.00, 1.00, 1.10, 1000, 0, 100.00, 0, 0, 100.00, '1899-12-30'),
-- C2: ESOW granted on 30 June 2001, before 1 January 2002
(2043, 2024, 2, 'CSOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOW', '2001-06-30', '2024-06-03',
 1.00, 1.00, 1.10, 1000, 0, 100.00, 0, 0, 100.00, '1899-12-30'),
-- C3: plan type blank
(2043, 2024, 3, 'CSOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', '', '2020-01-15', '2024-06-03',
 1.00, 1.00, 1.10, 1000, 0, 100.00, 0, 0, 100.00, '1899-12-30'),
-- C4: negative gains on a positive number of shares
(2043, 2024, 4, 'CSOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOP', '2020-01-15', '2024-06-03',
 1.00, 1.00, 0.90, 100, 0, -10.00, 0, 0, -10.00, '1899-12-30'),
-- C5: exempt amount beyond its range
(2043, 2024, 5, 'CSOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOP', '2020-01-15', '2024-06-03',
 1.00, 1.00, 1.10, 1000, 0, -10000000.00, 0, 0, 100.00, '1899-12-30'),
-- D1: granted in 2014, outside 16 Feb 2008 to 15 Feb 2013
(2044, 2024, 1, 'NSOP', 'CompanyROC', '200907777K', 'Spark Start Pte Ltd', 'ESOP', '2014-01-01', '2024-06-03',
 1.00, 1.00, 1.10, 1000, 0, 0, 100.00, 0, 100.00, '2012-06-01'),
-- D2: granted more than three years after incorporation (limit 1 March 2011)
(2044, 2024, 2, 'NSOP', 'CompanyROC', '200907777K', 'Spark Start Pte Ltd', 'ESOP', '2012-06-01', '2024-06-03',
 1.00, 1.00, 1.10, 1000, 0, 0, 100.00, 0, 100.00, '2008-03-01'),
-- D3: granted before incorporation
(2044, 2024, 3, 'NSOP', 'CompanyROC', '200907777K', 'Spark Start Pte Ltd', 'ESOP', '2009-01-01', '2024-06-03',
 1.00, 1.00, 1.10, 1000, 0, 0, 100.00, 0, 100.00, '2009-06-01'),
-- D4: negative exercise price
(2044, 2024, 4, 'NSOP', 'CompanyROC', '200907777K', 'Spark Start Pte Ltd', 'ESOP', '2010-01-04', '2024-06-03',
 -2.00, 1.00, 1.10, 1000, 0, 0, 100.00, 0, 100.00, '2009-06-01'),
-- D5: exempt amount beyond its range
(2044, 2024, 5, 'NSOP', 'CompanyROC', '200907777K', 'Spark Start Pte Ltd', 'ESOP', '2010-01-04', '2024-06-03',
 1.00, 1.00, 1.10, 1000, 0, 0, 10000000.50, 0, 100.00, '2009-06-01');

------------------------------------------------------------------------------
-- ERRHEAD: two ordinary employees under a header that fails its checks.
------------------------------------------------------------------------------
INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId, SupYEGlobalId, PayeeIDType, TaxNo,
                        EEName1, EEName2, IRASNationalityCode, Gender, DOB, Designation,
                        PaymentFrom, PaymentTo, Commencement, Cessation) VALUES
('ERRHEAD', 2024, 4001, 3, 4, 'NRIC', 'S8311223I', 'Sia Kim Chuan', '', '301', 'M', '1983-11-22', 'Clerk',
 '2024-01-01', '2024-12-31', '2010-02-01', '1899-12-30'),
('ERRHEAD', 2024, 4002, 3, 4, 'NRIC', 'S7922334D', 'Tock Lay Peng', '', '301', 'F', '1979-02-23', 'Clerk',
 '2024-01-01', '2024-12-31', '2012-09-03', '1899-12-30');
INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, EECPFPension) VALUES
(4001, 2024, 'CurIR8A', 33600.00, 6720.00),
(4002, 2024, 'CurIR8A', 31200.00, 6240.00);

------------------------------------------------------------------------------
-- ONEIL: year-end years 2023 and 2024.
------------------------------------------------------------------------------
INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId, SupYEGlobalId, PayeeIDType, TaxNo,
                        EEName1, EEName2, IRASNationalityCode, Gender, DOB, Designation,
                        PaymentFrom, PaymentTo, Commencement, Cessation) VALUES
-- Left on 31 March 2024, after the basis year of the supplementary return
-- (2023): SupPaymentTo is 2023-12-31 and SupCessation the empty date.
('ONEIL', 2023, 3001, 1, 2, 'NRIC', 'S8181888F', 'Murphy Sean Patrick', '', '301', 'M', '1981-08-18', 'Analyst',
 '2023-01-01', '2023-12-31', '2016-02-01', '1899-12-30'),
('ONEIL', 2024, 3001, 3, 4, 'NRIC', 'S8181888F', 'Murphy Sean Patrick', '', '301', 'M', '1981-08-18', 'Analyst',
 '2024-01-01', '2024-03-31', '2016-02-01', '2024-03-31'),
-- No cessation date at all: SupPaymentTo is 2023-12-31.
('ONEIL', 2023, 3002, 1, 2, 'NRIC', 'S7272727D', 'Harpreet Kaur', '', '301', 'F', '1972-07-27', 'Office Manager',
 '2023-01-01', '2023-12-31', '2015-12-01', '1899-12-30'),
('ONEIL', 2024, 3002, 3, 4, 'NRIC', 'S7272727D', 'Harpreet Kaur', '', '301', 'F', '1972-07-27', 'Office Manager',
 '2024-01-01', '2024-12-31', '2015-12-01', '1899-12-30'),
-- Left on 31 August 2023: SupCessation and SupPaymentTo are 2023-08-31.
('ONEIL', 2023, 3003, 1, 2, 'NRIC', 'S9393939E', 'Yeo Chee Keong', '', '301', 'M', '1993-09-03', 'Associate',
 '2023-01-01', '2023-08-31', '2019-05-02', '2023-08-31'),
('ONEIL', 2024, 3003, 3, 4, 'NRIC', 'S9393939E', 'Yeo Chee Keong', '', '301', 'M', '1993-09-03', 'Associate',
 '2023-01-01', '2023-08-31', '2019-05-02', '2023-08-31');

INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, ContratualBonus, NonContratualBonus, BonusDeclared, EECPFPension) VALUES
(3001, 2023, 'CurIR8A', 66000.00, 5500.00, 0, '1899-12-30', 14300.00),
(3002, 2023, 'CurIR8A', 84000.00, 7000.00, 0, '1899-12-30', 16320.00),
(3003, 2023, 'CurIR8A', 32000.00, 0, 0, '1899-12-30', 6400.00),
(3001, 2024, 'CurIR8A', 16500.00, 0, 0, '1899-12-30', 3300.00),
(3002, 2024, 'CurIR8A', 86400.00, 7200.00, 0, '1899-12-30', 16320.00),
-- Supplementary for basis year 2023: bonuses for 2023 declared late in 2023.
(3001, 2024, 'SupIR8A', 0, 0, 1800.00, '2023-12-28', 360.00),
(3002, 2024, 'SupIR8A', 1200.00, 0, 0, '1899-12-30', 240.00),
(3003, 2024, 'SupIR8A', 0, 0, 2500.00, '2023-12-28', 500.00);

-- Five more, both years.
INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId, SupYEGlobalId, PayeeIDType, TaxNo,
                        EEName1, EEName2, IRASNationalityCode, Gender, DOB, Designation,
                        PaymentFrom, PaymentTo, Commencement, Cessation)
WITH People(n, Name, Gender, TaxNo) AS (VALUES
    (4, 'Kelly Brennan', 'F', 'S8626262B'), (5, 'Lim Chun Kiat', 'M', 'S8747474G'),
    (6, 'Noor Hidayah binte Salleh', 'F', 'S8844556B'), (7, 'Pillai Suresh', 'M', 'S9166778I'),
    (8, 'Tan Xiu Ling', 'F', 'S8255667B')),
Years(y, g, s) AS (VALUES (2023, 1, 2), (2024, 3, 4))
SELECT 'ONEIL', y, 3000 + n, g, s, 'NRIC', TaxNo, Name, '', '301', Gender,
       date('19' || substr(TaxNo, 2, 2) || '-03-01', '+' || (n * 41) || ' days'), 'Consultant',
       y || '-01-01', y || '-12-31', date('2014-01-06', '+' || (n * 97) || ' days'), '1899-12-30'
FROM People CROSS JOIN Years;

INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, ContratualBonus, EECPFPension)
SELECT PersonalSysId, YEYear, 'CurIR8A', 48000.00 + (PersonalSysId - 3000) * 1200 + (YEYear - 2023) * 1800,
       4000.00 + (PersonalSysId - 3000) * 100, 10400.00
FROM YEEmployee WHERE YEEmployerId = 'ONEIL' AND PersonalSysId BETWEEN 3004 AND 3008;

------------------------------------------------------------------------------
-- All employers: the IR8S Section A total rows (thirteenth row).
------------------------------------------------------------------------------
INSERT INTO IR8SA (PersonalSysId, YEYear, IR8SOrder, IR8SMonth, OrdWages, ContriOrdERCPF, ContriOrdEECPF,
                   AddWages, ContriAddERCPF, ContriAddEECPF)
SELECT PersonalSysId, YEYear, 13, 'Total', sum(OrdWages), sum(ContriOrdERCPF), sum(ContriOrdEECPF),
       sum(AddWages), sum(ContriAddERCPF), sum(ContriAddEECPF)
FROM IR8SA WHERE YEYear < 10000 GROUP BY PersonalSysId, YEYear;

-- ERRCO 2026: a fourteenth Section A row (at most thirteen, the total included).
INSERT INTO IR8SA (PersonalSysId, YEYear, IR8SOrder, IR8SMonth, OrdWages, ContriOrdERCPF, ContriOrdEECPF)
VALUES (2026, 2024, 14, 'Extra', 2500.00, 425.00, 500.00);

------------------------------------------------------------------------------
-- All employers: the payroll keeps the total of item d of each IR8A (the
-- allowances, commission, gratuity, contributions, gains and benefits that
-- make up "others"), as entered, negative corrections included. An employee
-- whose only income is a commission is reported through it.
------------------------------------------------------------------------------
UPDATE IR8A SET TotalSectionD = Commission + Pension + Transport + Entertainment + OtherAllowance
    + OtherAllowanceAmt + CPFBorneByER + Gratuity + AccruedFrom + EROutsideContri + ERExcessContri
    + TotalStockGainsAfter + BenefitsInKind + IR8ABenefitsInKind;

------------------------------------------------------------------------------
-- Persons, employee codes and the banks that salaries are paid into.
------------------------------------------------------------------------------
-- A person's rows of several years agree on name and birth date; the
-- aggregates say which row's value is taken, as a server database requires.
INSERT INTO Personal (PersonalSysId, PersonalName, DateOfBirth)
SELECT PersonalSysId, max(trim(EEName1 || ' ' || EEName2)), max(DOB)
FROM YEEmployee WHERE YEYear < 10000 GROUP BY PersonalSysId;

INSERT INTO Employee (EmployeeSysId, EmployeeCode, PersonalSysId, DateJoined, DateLeft)
SELECT 50000 + PersonalSysId,
       CASE max(YEEmployerId) WHEN 'IR8AYA2025' THEN 'LCP' WHEN 'ERRCO' THEN 'ERT' WHEN 'ONEIL' THEN 'ONH' ELSE 'BPS' END
           || printf('%04d', PersonalSysId % 1000),
       PersonalSysId, min(Commencement), max(Cessation)
FROM YEEmployee WHERE YEYear < 10000 GROUP BY PersonalSysId;

-- Bank codes: 1 DBS/POSB, 2 UOB, 3 OCBC, 4 others. ERRCO's employees are
-- paid by cheque and have none.
INSERT INTO EmployeeBank (EmployeeSysId, IRASBankCode, BankName, BankAccountNo) VALUES
(51001, '1', 'DBS Bank', '120-345678-9'),
(51002, '1', 'POSB', '188-22345-6'),
(51003, '3', 'OCBC Bank', '501-234567-001'),
(51004, '2', 'UOB', '372-301-456-7'),
(51005, '1', 'POSB', '203-45678-1'),
(51006, '4', 'Standard Chartered Bank', '01-2345678-9'),
(51007, '1', 'DBS Bank', '027-123456-7'),
(51008, '3', 'OCBC Bank', '687-765432-001'),
(51009, '2', 'UOB', '145-302-789-0'),
(51010, '4', 'HSBC', '146-123456-833'),
(51011, '1', 'POSB', '166-54321-0'),
(51012, '3', 'OCBC Bank', '595-111222-001'),
(51013, '2', 'UOB', '318-220-415-6'),
(51014, '1', 'DBS Bank', '072-884512-3');
INSERT INTO EmployeeBank (EmployeeSysId, IRASBankCode, BankName, BankAccountNo)
SELECT EmployeeSysId, CAST(PersonalSysId % 3 + 1 AS TEXT),
       CASE PersonalSysId % 3 WHEN 0 THEN 'DBS Bank' WHEN 1 THEN 'UOB' ELSE 'OCBC Bank' END,
       printf('%03d-%06d-%d', PersonalSysId % 997, PersonalSysId * 7, PersonalSysId % 10)
FROM Employee WHERE PersonalSysId BETWEEN 1101 AND 1199 OR PersonalSysId BETWEEN 3000 AND 4999;

------------------------------------------------------------------------------
-- Last generations, user rights and the registry row.
------------------------------------------------------------------------------
INSERT INTO LastSubmission (YEEmployerId, SubmissionType, IsOriginal, SubmitUserId, LastSubmissionDateTime, YEYear) VALUES
('IR8AYA2025', 'CurIR8A', 1, 'ADMIN', '2024-02-26 10:15:00', 2023),
('IR8AYA2025', 'IR8S',    1, 'ADMIN', '2024-02-26 10:20:31', 2023),
('IR8AYA2025', 'All',     1, 'ADMIN', '2024-02-20 16:45:09', 2023),
('ONEIL',      'A8A',     0, 'CLERK', '2024-03-11 09:02:47', 2023);

INSERT INTO UserModuleRights (UserId, ModuleId) VALUES
('ADMIN', 'YEIRASDirect'), ('ADMIN', 'YEDirectCurIR8ARpt'), ('ADMIN', 'YEDirectSupIR8ARpt'),
('ADMIN', 'YEDirectIR8SRpt'), ('ADMIN', 'YEDirectA8ARpt'), ('ADMIN', 'YEDirectA8BRpt'),
('CLERK', 'YEIRASDirect'), ('CLERK', 'YEDirectCurIR8ARpt');

UPDATE subregistry SET RegProperty1 = 'IR8AYA2025', RegProperty2 = '2024'
WHERE RegistryId = 'YEPRocess' AND SubRegistryId = 'TaxEmployerBasisYear';

DROP TABLE BulkPeople;
DROP TABLE BulkPay;
DROP TABLE IR8SPay;
