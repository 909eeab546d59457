-- IR8S sample rows beyond those of sample.sql, which gives the clean
-- employer IR8AYA2025 its IR8S of 2024 (ten employees, thirteen Section A
-- rows each, none to three Section B payments) and ERRCO one employee per
-- broken IR8S rule. Here: an ERRCO employee whose record the file cannot
-- hold, reported in an Amendment too.

-- an employee's voluntary contribution of 12,345,678: wider than its seven places
INSERT INTO IR8S (PersonalSysId, YEYear, DateOfPRGranted, ApprovalForFullCPF, CPFOverseasObligatory, EEVolCPF,
                  FlagExcessCPF, IR8SIndicator) VALUES
(2034, 2024, NULL, '', '', 12345678.00, 'Y', 'Y');

-- twelve months of 2,500.00 and their total
INSERT INTO IR8SA (PersonalSysId, YEYear, IR8SOrder, IR8SMonth, OrdWages, ContriOrdERCPF, ContriOrdEECPF)
WITH RECURSIVE Months(m) AS (SELECT 1 UNION ALL SELECT m + 1 FROM Months WHERE m < 13)
SELECT 2034, 2024, m.m,
       CASE WHEN m.m = 13 THEN 'Total' ELSE substr('JanFebMarAprMayJunJulAugSepOctNovDec', m.m * 3 - 2, 3) END,
       CASE WHEN m.m = 13 THEN 30000.00 ELSE 2500.00 END,
       CASE WHEN m.m = 13 THEN 5100.00 ELSE 425.00 END,
       CASE WHEN m.m = 13 THEN 6000.00 ELSE 500.00 END
FROM Months m;
