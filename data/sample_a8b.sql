-- Sample rows that came with the Appendix 8B return (run after sample.sql).
--
-- IR8AYA2025's supplementary IR8A of year-end year 2024. The "All" run hands
-- every return the Basis Year as given, the supplementary one included, so
-- `generate --type all --year 2024` checks these rows against basis year
-- 2024: their periods lie in 2024. With them the clean employer's "All" run
-- writes the supplementary file too. A single `--type sup-ir8a --year 2023`
-- run checks the same rows against 2023 and refuses them; the supplementary
-- return of year-end year 2023 (`--type sup-ir8a --year 2022`) is the one to
-- try on its own.
--   1002 Nur Aisyah binte Rahman: a bonus of 800.00 declared on 20 December
--        2024 after the current return, CPF 160.00.
--   1007 Priya d/o Subramaniam (joined 18 March 2024): salary 1250.00 paid
--        late, CPF 250.00.
INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, NonContratualBonus, BonusDeclared, EECPFPension) VALUES
(1002, 2024, 'SupIR8A', 0, 800.00, '2024-12-20', 160.00),
(1007, 2024, 'SupIR8A', 1250.00, 0, '1899-12-30', 250.00);

-- ERRCO: Appendix 8B rows for the checks that the rows of sample.sql leave
-- unbroken (one broken check each, otherwise valid).
INSERT INTO A8BRecord (PersonalSysId, YEYear, A8BRecordSysId, StockOptionType, CompanyIDType, RCBNo, CompanyName,
                       TypePlanGranted, DateStockGranted, DateExerciseStock, ExercisePriceStock, MktValueStockGrant,
                       MktValueExerciseStock, SharesAcquired, EESOPTaxExempt, CSOPTaxExempt, NSOPTaxExempt,
                       NoTaxExempt, StockGains, DateIncorporation) VALUES
-- C6: exercised in 2030, after the processing date (IRAS's Section C text
-- for it reads "Date cannot be blank.")
(2043, 2024, 6, 'CSOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOP', '2020-01-15', '2030-01-02',
 1.00, 1.00, 1.10, 1000, 0, 100.00, 0, 0, 100.00, '1899-12-30'),
-- C7: gains beyond their range
(2043, 2024, 7, 'CSOP', 'CompanyROC', '201012345Z', 'Errata Trading Pte Ltd', 'ESOP', '2020-01-15', '2024-06-03',
 1.00, 1.00, 1.10, 1000, 0, 100.00, 0, 0, 10000000.00, '1899-12-30'),
-- D6: negative gains on a positive number of shares
(2044, 2024, 6, 'NSOP', 'CompanyROC', '200907777K', 'Spark Start Pte Ltd', 'ESOP', '2010-01-04', '2024-06-03',
 1.00, 1.00, 1.10, 1000, 0, 0, 100.00, 0, -100.00, '2009-06-01'),
-- D7: gains beyond their range (the shares are negative, so no sign check)
(2044, 2024, 7, 'NSOP', 'CompanyROC', '200907777K', 'Spark Start Pte Ltd', 'ESOP', '2010-01-04', '2024-06-03',
 1.00, 1.00, 1.10, -1000, 0, 0, 100.00, 0, -10000000.00, '2009-06-01');

-- ERRHEAD: one employee with share-plan gains, so that the Appendix 8B run
-- reaches the header checks (source Mindef, which this return refuses; blank
-- organisation id type, employer name and e-mail address).
INSERT INTO A8B (PersonalSysId, YEYear, TotalESOPNoTaxExempt, TotalESOPStockGains, GrandTotalStockGains) VALUES
(4001, 2024, 500.00, 500.00, 500.00);
INSERT INTO A8BRecord (PersonalSysId, YEYear, A8BRecordSysId, StockOptionType, CompanyIDType, RCBNo, CompanyName,
                       TypePlanGranted, DateStockGranted, DateExerciseStock, ExercisePriceStock, MktValueExerciseStock,
                       SharesAcquired, NoTaxExempt, StockGains) VALUES
(4001, 2024, 1, 'ESOP', 'CompanyROC', '199512345D', 'Blank Page Services Pte Ltd', 'ESOP', '2019-07-01', '2024-05-02',
 1.00, 1.50, 1000, 500.00, 500.00);

-- IR8AYA2025: a second employee with plans in all four sections, all granted
-- after 2003 (E exercise price, G value at grant, X value at exercise, N shares).
--   1009 Goh Siew Lan:
--     A: ESOP 2022, (1.45 - 1.10) x 2000 = 700.00;
--     B: ESOP 2016, exempt (1.95 - 1.20) x 4000 = 3000.00, not qualifying
--        (1.20 - 0.80) x 4000 = 1600.00, gains 4600.00, exercised in 2023;
--     C: ESOW 2019, exempt (2.60 - 2.10) x 1000 = 500.00, not qualifying
--        (2.10 - 0) x 1000 = 2100.00, gains 2600.00;
--     D: ESOP 2012 of a start-up incorporated 1 February 2010, exempt
--        (0.65 - 0.20) x 20000 = 9000.00, not qualifying (0.20 - 0.05) x 20000
--        = 3000.00, gains 12000.00;
--     all gains 700 + 4600 + 2600 + 12000 = 19900.00, which her IR8A reports
--     as gains from plans after 2003.
INSERT INTO A8BRecord (PersonalSysId, YEYear, A8BRecordSysId, StockOptionType, CompanyIDType, RCBNo, CompanyName,
                       TypePlanGranted, DateStockGranted, DateExerciseStock, ExercisePriceStock, MktValueStockGrant,
                       MktValueExerciseStock, SharesAcquired, EESOPTaxExempt, CSOPTaxExempt, NSOPTaxExempt,
                       NoTaxExempt, StockGains, DateIncorporation) VALUES
(1009, 2024, 1, 'ESOP', 'CompanyROC', '201912345K', 'Lion City Precision Engineering Pte Ltd',
 'ESOP', '2022-03-01', '2024-03-05', 1.10, 0, 1.45, 2000, 0, 0, 0, 700.00, 700.00, '1899-12-30'),
(1009, 2024, 2, 'EESOP', 'CompanyUENO', '201533321W', 'Harbourfront Analytics Pte Ltd',
 'ESOP', '2016-04-01', '2023-11-20', 0.80, 1.20, 1.95, 4000, 3000.00, 0, 0, 1600.00, 4600.00, '1899-12-30'),
(1009, 2024, 3, 'CSOP', 'CompanyROC', '201912345K', 'Lion City Precision Engineering Pte Ltd',
 'ESOW', '2019-09-02', '2024-06-14', 0, 2.10, 2.60, 1000, 0, 500.00, 0, 2100.00, 2600.00, '1899-12-30'),
(1009, 2024, 4, 'NSOP', 'CompanyROC', '201003456R', 'Kopi Robotics Pte Ltd',
 'ESOP', '2012-01-16', '2024-09-02', 0.05, 0.20, 0.65, 20000, 0, 0, 9000.00, 3000.00, 12000.00, '2010-02-01');
INSERT INTO A8B (PersonalSysId, YEYear,
                 TotalESOPNoTaxExempt, TotalESOPStockGains,
                 TotalEESOPTaxExempt, TotalEESOPNoTaxExempt, TotalEESOPStockGains,
                 TotalCSOPTaxExempt, TotalCSOPNoTaxExempt, TotalCSOPStockGains,
                 TotalNSOPTaxExempt, TotalNSOPNoTaxExempt, TotalNSOPStockGains, GrandTotalStockGains) VALUES
(1009, 2024, 700.00, 700.00, 3000.00, 1600.00, 4600.00, 500.00, 2100.00, 2600.00, 9000.00, 3000.00, 12000.00,
 19900.00);
UPDATE IR8A SET TotalStockGainsAfter = 19900.00 WHERE PersonalSysId = 1009 AND YEYear = 2024 AND IR8AType = 'CurIR8A';
