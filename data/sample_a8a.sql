-- Appendix 8A rows that the shared sample data does not have.
--
-- ERRHEAD: a benefit in kind for each of its two employees, so that an
-- Original Appendix 8A of 2024 reaches the header checks: a blank
-- organisation id type and a blank e-mail address fail them; the employer
-- name of two blank lines is one blank, which the appendix's untrimmed test
-- lets pass. The employees themselves are clean.
INSERT INTO A8A (PersonalSysId, YEYear, OccupationDays, NoOfEESharingQtr, OHQStatus, Clubs, TotalBenefitInKind) VALUES
(4001, 2024, 0, 1, 'N', 1200.00, 1200.00),
(4002, 2024, 0, 1, '',   800.00,  800.00);
