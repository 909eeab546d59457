-- Year-end schema of the payroll database: the employer and employee tables of
-- a year-end processing, one table per IRAS return (IR8A, IR8S with its
-- Sections A and B, Appendix 8A with its Sections 2 and 3, Appendix 8B with its
-- share-plan rows), the keyword table that maps the payroll's codes to IRAS's,
-- the last generation of each return, the registry row that tells the
-- submission engine which employer and basis year are being worked on, user
-- rights, and the three look-up tables behind the database functions.
--
-- Conventions (every reader and writer of this database relies on them):
-- * Dates are TEXT 'YYYY-MM-DD'; date-times are TEXT 'YYYY-MM-DD HH:MM:SS'.
--   The empty date is '1899-12-30'. Date columns that the payroll always fills
--   are NOT NULL DEFAULT '1899-12-30'; readers still treat NULL as empty.
-- * Money is REAL (dollars and cents), zero by default.
-- * YEYear is the year-end year, INTEGER. Below 10000 it is live data. The
--   submission engine keeps the copy of what was last submitted in the same
--   tables under 9 followed by the basis year (92023), and the copy before that
--   under 8 followed by the basis year (82023), so no key may stop a person
--   from having rows under several YEYear values.
-- * Stored codes (EmployerSource, PayerID, PayeeIDType, IncomeBorneStatus,
--   ExemptIncomeType, CommissionStatus, CompanyIDType, TypePlanGranted) are
--   YEKeyWord.YEKeyWordId values, never IRAS's codes themselves.
-- * The return queries join the employee table (alias A), a return table
--   (alias B) and YEGlobal, and name many columns without a table. A column
--   named without a table must therefore live in only one of those three, and
--   no column may share a name with an alias of those queries (EmployeeId,
--   Bonus, OthersAmt, Amt, SupCessation, EmployerName, ...): the two would
--   resolve differently from one database engine to another.
-- * The widths in comments are those of the IRAS record fields; longer texts
--   are stored and cut when the record is written.

-- Tax employers (the "Tax Employer" list of the session form).
CREATE TABLE YEEmployer (
    YEEmployerId       TEXT NOT NULL PRIMARY KEY,  -- e.g. 'IR8AYA2025'
    YEEmployerDesc     TEXT NOT NULL DEFAULT '',
    ERName1            TEXT NOT NULL DEFAULT '',   -- name, line 1
    ERName2            TEXT NOT NULL DEFAULT '',   -- name, line 2
    EmployerSource     TEXT NOT NULL DEFAULT '',   -- keyword, category EmployerSource
    PayerID            TEXT NOT NULL DEFAULT '',   -- keyword, category OrganisationIDType
    TaxRefNo           TEXT NOT NULL DEFAULT '',   -- organisation id no. (UEN), 12
    AuthorisedName     TEXT NOT NULL DEFAULT '',   -- 30
    Designation        TEXT NOT NULL DEFAULT '',   -- of the authorised person, 30
    TelephoneNo        TEXT NOT NULL DEFAULT '',   -- 20
    EmailAddress       TEXT NOT NULL DEFAULT '',   -- IRAS accepts at most 50
    DivisionBranch     TEXT NOT NULL DEFAULT '',   -- 30
    DateIncorporation  TEXT NOT NULL DEFAULT '1899-12-30'
);

-- Year-end global settings; an employee row points at the one of its current
-- return (CurrentYEGlobalId) and of its supplementary return (SupYEGlobalId).
CREATE TABLE YEGlobal (
    YEGlobalId         INTEGER NOT NULL PRIMARY KEY,
    YEYear             INTEGER NOT NULL,
    YEGlobalType       TEXT NOT NULL DEFAULT 'CurIR8A',  -- 'CurIR8A' or 'SupIR8A'
    YEGlobalDesc       TEXT NOT NULL DEFAULT '',
    YEPeriodStart      TEXT NOT NULL DEFAULT '1899-12-30',
    YEPeriodEnd        TEXT NOT NULL DEFAULT '1899-12-30'
);

-- One row per person, tax employer and year-end year: the identity and period
-- of employment that every return prints.
CREATE TABLE YEEmployee (
    YEEmployerId         TEXT NOT NULL,
    YEYear               INTEGER NOT NULL,
    PersonalSysId        INTEGER NOT NULL,
    CurrentYEGlobalId    INTEGER,               -- YEGlobal.YEGlobalId
    SupYEGlobalId        INTEGER,               -- YEGlobal.YEGlobalId
    PayeeIDType          TEXT NOT NULL DEFAULT '',  -- keyword, category PayeeIDType
    TaxNo                TEXT NOT NULL DEFAULT '',  -- NRIC / FIN / ..., 12
    EEName1              TEXT NOT NULL DEFAULT '',  -- 40
    EEName2              TEXT NOT NULL DEFAULT '',  -- 40
    IRASNationalityCode  TEXT NOT NULL DEFAULT '',  -- IRAS nationality code, 3
    Gender               TEXT NOT NULL DEFAULT '',  -- 'F' or 'M'
    DOB                  TEXT NOT NULL DEFAULT '1899-12-30',
    Designation          TEXT NOT NULL DEFAULT '',  -- the employee's designation, 30
    PaymentFrom          TEXT NOT NULL DEFAULT '1899-12-30',
    PaymentTo            TEXT NOT NULL DEFAULT '1899-12-30',
    Commencement         TEXT NOT NULL DEFAULT '1899-12-30',
    Cessation            TEXT NOT NULL DEFAULT '1899-12-30',
    PRIMARY KEY (YEEmployerId, YEYear, PersonalSysId)
);
CREATE INDEX YEEmployee_YearPerson ON YEEmployee (YEYear, PersonalSysId);
CREATE INDEX YEEmployee_Person ON YEEmployee (PersonalSysId);

-- Form IR8A: one row per person, year-end year and kind ('CurIR8A' for the
-- basis year YEYear; 'SupIR8A' for additions to the basis year YEYear - 1).
CREATE TABLE IR8A (
    PersonalSysId             INTEGER NOT NULL,
    YEYear                    INTEGER NOT NULL,
    IR8AType                  TEXT NOT NULL DEFAULT 'CurIR8A',
    GrossTotal                REAL NOT NULL DEFAULT 0,  -- gross salary
    ContratualBonus           REAL NOT NULL DEFAULT 0,
    NonContratualBonus        REAL NOT NULL DEFAULT 0,
    BonusDeclared             TEXT NOT NULL DEFAULT '1899-12-30',
    DirectorFee               REAL NOT NULL DEFAULT 0,
    DirFeeApproved            TEXT NOT NULL DEFAULT '1899-12-30',
    Commission                REAL NOT NULL DEFAULT 0,
    CommissionFrom            TEXT NOT NULL DEFAULT '1899-12-30',
    CommissionTo              TEXT NOT NULL DEFAULT '1899-12-30',
    CommissionStatus          TEXT NOT NULL DEFAULT '',  -- keyword, category CommissionType
    Pension                   REAL NOT NULL DEFAULT 0,
    Transport                 REAL NOT NULL DEFAULT 0,
    Entertainment             REAL NOT NULL DEFAULT 0,
    OtherAllowance            REAL NOT NULL DEFAULT 0,
    OtherAllowanceAmt         REAL NOT NULL DEFAULT 0,
    CPFBorneByER              REAL NOT NULL DEFAULT 0,  -- employee's CPF paid by the employer
    Gratuity                  REAL NOT NULL DEFAULT 0,
    LumpSumCompensation       REAL NOT NULL DEFAULT 0,
    CompensationApprovedDate  TEXT NOT NULL DEFAULT '1899-12-30',
    RetirementDetails         TEXT NOT NULL DEFAULT '',  -- 60
    AccruedTo                 REAL NOT NULL DEFAULT 0,   -- retirement benefits accrued up to 1992
    AccruedFrom               REAL NOT NULL DEFAULT 0,   -- accrued from 1993
    EROutsideContri           REAL NOT NULL DEFAULT 0,   -- to funds outside Singapore
    EEPensionDetails          TEXT NOT NULL DEFAULT '',  -- 60
    ERExcessContri            REAL NOT NULL DEFAULT 0,   -- excess / voluntary CPF by employer
    TotalStockGainsBef        REAL NOT NULL DEFAULT 0,   -- share-plan gains, plans before 2003
    TotalStockGainsAfter      REAL NOT NULL DEFAULT 0,   -- share-plan gains, plans from 2003
    BenefitsInKind            REAL NOT NULL DEFAULT 0,   -- from Appendix 8A
    IR8ABenefitsInKind        REAL NOT NULL DEFAULT 0,   -- entered on the IR8A itself
    TotalSectionD             REAL NOT NULL DEFAULT 0,   -- the payroll's total of item d (allowances, commission, gains, benefits ...)
    RemissionAmt              REAL NOT NULL DEFAULT 0,
    ExemptIncomeAmt           REAL NOT NULL DEFAULT 0,
    ExemptIncomeType          TEXT NOT NULL DEFAULT 'IncomeTypeNA',  -- keyword, category ExemptIncomeType
    IncomeBorneStatus         TEXT NOT NULL DEFAULT 'NotApplicable', -- keyword, category IncomeBorneStatus
    TaxBorneByER              REAL NOT NULL DEFAULT 0,
    FixedAmtBorneByEE         REAL NOT NULL DEFAULT 0,
    IRASSection45             TEXT NOT NULL DEFAULT 'N',  -- 'Y' or 'N'
    CessationProvision        TEXT NOT NULL DEFAULT 'N',  -- 'Y' or 'N'
    IR8SIndicator             TEXT NOT NULL DEFAULT 'N',  -- 'Y' when an IR8S is filed
    DiffERCPF                 REAL NOT NULL DEFAULT 0,    -- employer CPF above the statutory amount
    EECPFPension              REAL NOT NULL DEFAULT 0,    -- employee's CPF / designated pension fund
    Donation                  REAL NOT NULL DEFAULT 0,
    MOSQFund                  REAL NOT NULL DEFAULT 0,    -- MBMF
    Insurance                 REAL NOT NULL DEFAULT 0,
    PRIMARY KEY (PersonalSysId, YEYear, IR8AType)
);
CREATE INDEX IR8A_YearPerson ON IR8A (YEYear, PersonalSysId);

-- Form IR8S: CPF details of one person and year-end year.
CREATE TABLE IR8S (
    PersonalSysId          INTEGER NOT NULL,
    YEYear                 INTEGER NOT NULL,
    DateOfPRGranted        TEXT,                      -- NULL: not a Singapore PR
    ApprovalForFullCPF     TEXT NOT NULL DEFAULT '',  -- '', 'Y' or 'N'
    CPFOverseasObligatory  TEXT NOT NULL DEFAULT '',  -- '', 'Y' or 'N'
    ERVolCPF               REAL NOT NULL DEFAULT 0,
    EEVolCPF               REAL NOT NULL DEFAULT 0,
    Flag100K               TEXT NOT NULL DEFAULT 'N',
    FlagExcessCPF          TEXT NOT NULL DEFAULT 'N',
    FlagOverseasCPF        TEXT NOT NULL DEFAULT 'N',
    IR8SIndicator          TEXT NOT NULL DEFAULT 'N',
    FlagPercentOrdWage     TEXT NOT NULL DEFAULT 'N',
    PRIMARY KEY (PersonalSysId, YEYear)
);
CREATE INDEX IR8S_YearPerson ON IR8S (YEYear, PersonalSysId);

-- IR8S Section A: twelve monthly rows (IR8SOrder 1 to 12) and a total row (13).
CREATE TABLE IR8SA (
    PersonalSysId    INTEGER NOT NULL,
    YEYear           INTEGER NOT NULL,
    IR8SOrder        INTEGER NOT NULL,
    IR8SMonth        TEXT NOT NULL DEFAULT '',  -- 'Jan' ... 'Dec', 'Total'
    OrdWages         REAL NOT NULL DEFAULT 0,
    ContriOrdERCPF   REAL NOT NULL DEFAULT 0,
    ContriOrdEECPF   REAL NOT NULL DEFAULT 0,
    AddWages         REAL NOT NULL DEFAULT 0,
    ContriAddERCPF   REAL NOT NULL DEFAULT 0,
    ContriAddEECPF   REAL NOT NULL DEFAULT 0,
    PRIMARY KEY (PersonalSysId, YEYear, IR8SOrder)
);
CREATE INDEX IR8SA_YearPerson ON IR8SA (YEYear, PersonalSysId);

-- IR8S Section B: additional-wage payments and the CPF refund claimed on each.
CREATE TABLE IR8SC (
    PersonalSysId    INTEGER NOT NULL,
    YEYear           INTEGER NOT NULL,
    RefundSysId      INTEGER NOT NULL,
    AddWageAmt       REAL NOT NULL DEFAULT 0,
    AddWageFrom      TEXT NOT NULL DEFAULT '1899-12-30',
    AddWageTo        TEXT NOT NULL DEFAULT '1899-12-30',
    AddWagePaidDate  TEXT NOT NULL DEFAULT '1899-12-30',
    ERContribution   REAL NOT NULL DEFAULT 0,
    ERInterest       REAL NOT NULL DEFAULT 0,
    ERDate           TEXT NOT NULL DEFAULT '1899-12-30',
    EEContribution   REAL NOT NULL DEFAULT 0,
    EEInterest       REAL NOT NULL DEFAULT 0,
    EEDate           TEXT NOT NULL DEFAULT '1899-12-30',
    PRIMARY KEY (PersonalSysId, YEYear, RefundSysId)
);
CREATE INDEX IR8SC_YearPerson ON IR8SC (YEYear, PersonalSysId);

-- Appendix 8A: the place of residence and the benefits in kind of a person.
CREATE TABLE A8A (
    PersonalSysId       INTEGER NOT NULL,
    YEYear              INTEGER NOT NULL,
    ResidenceAddress1   TEXT NOT NULL DEFAULT '',  -- 30
    ResidenceAddress2   TEXT NOT NULL DEFAULT '',  -- 30
    ResidenceAddress3   TEXT NOT NULL DEFAULT '',  -- 30
    OccupationFrom      TEXT NOT NULL DEFAULT '1899-12-30',
    OccupationTo        TEXT NOT NULL DEFAULT '1899-12-30',
    OccupationDays      INTEGER NOT NULL DEFAULT 0,
    NoOfEESharingQtr    INTEGER NOT NULL DEFAULT 1,
    OHQStatus           TEXT NOT NULL DEFAULT '',  -- '', 'Y' or 'N'
    IncidentalBenefits  REAL NOT NULL DEFAULT 0,
    InterestLoan        REAL NOT NULL DEFAULT 0,
    LifeInsurance       REAL NOT NULL DEFAULT 0,
    Holidays            REAL NOT NULL DEFAULT 0,
    Education           REAL NOT NULL DEFAULT 0,
    LongService         REAL NOT NULL DEFAULT 0,
    Clubs               REAL NOT NULL DEFAULT 0,
    Assets              REAL NOT NULL DEFAULT 0,
    MotorVehicle        REAL NOT NULL DEFAULT 0,
    CarBenefit          REAL NOT NULL DEFAULT 0,
    TotalBenefitInKind  REAL NOT NULL DEFAULT 0,
    PRIMARY KEY (PersonalSysId, YEYear)
);
CREATE INDEX A8A_YearPerson ON A8A (YEYear, PersonalSysId);

-- Appendix 8A Sections 2 (accommodation) and 3 (utilities, hotel).
CREATE TABLE A8AS2S3 (
    PersonalSysId               INTEGER NOT NULL,
    YEYear                      INTEGER NOT NULL,
    A8AS2S3Order                INTEGER NOT NULL DEFAULT 1,
    AnnualValue                 REAL NOT NULL DEFAULT 0,
    FurnishedStatus             TEXT NOT NULL DEFAULT '',  -- 'Partially Furnished', 'Fully Furnished'
    FurnitureFittingsValue      REAL NOT NULL DEFAULT 0,
    RentPaidToLandlord          REAL NOT NULL DEFAULT 0,
    ResidenceValue              REAL NOT NULL DEFAULT 0,
    RentPaidByEmployee          REAL NOT NULL DEFAULT 0,
    TotalTaxableResidenceValue  REAL NOT NULL DEFAULT 0,
    UtilityTelPagerValue        REAL NOT NULL DEFAULT 0,
    Driver                      REAL NOT NULL DEFAULT 0,
    ServantGardener             REAL NOT NULL DEFAULT 0,
    TotalValueofUtilities       REAL NOT NULL DEFAULT 0,
    HotelAccommodation          REAL NOT NULL DEFAULT 0,
    HotelAmtPaidByEmployee      REAL NOT NULL DEFAULT 0,
    TotalHotelAccommodation     REAL NOT NULL DEFAULT 0,
    PRIMARY KEY (PersonalSysId, YEYear, A8AS2S3Order)
);
CREATE INDEX A8AS2S3_YearPerson ON A8AS2S3 (YEYear, PersonalSysId);

-- Appendix 8B: per person, each section's full totals and the part of them
-- from plans granted before 1 January 2003 (the ...Bef columns). The query
-- derives the part from 2003 on as the difference.
CREATE TABLE A8B (
    PersonalSysId              INTEGER NOT NULL,
    YEYear                     INTEGER NOT NULL,
    TotalESOPNoTaxExempt       REAL NOT NULL DEFAULT 0,  -- Section A
    TotalESOPNoTaxExemptBef    REAL NOT NULL DEFAULT 0,
    TotalESOPStockGains        REAL NOT NULL DEFAULT 0,
    TotalESOPStockGainsBef     REAL NOT NULL DEFAULT 0,
    TotalEESOPTaxExempt        REAL NOT NULL DEFAULT 0,  -- Section B (EEEBR)
    TotalEESOPTaxExemptBef     REAL NOT NULL DEFAULT 0,
    TotalEESOPNoTaxExempt      REAL NOT NULL DEFAULT 0,
    TotalEESOPNoTaxExemptBef   REAL NOT NULL DEFAULT 0,
    TotalEESOPStockGains       REAL NOT NULL DEFAULT 0,
    TotalEESOPStockGainsBef    REAL NOT NULL DEFAULT 0,
    TotalCSOPTaxExempt         REAL NOT NULL DEFAULT 0,  -- Section C (CEEBR)
    TotalCSOPTaxExemptBef      REAL NOT NULL DEFAULT 0,
    TotalCSOPNoTaxExempt       REAL NOT NULL DEFAULT 0,
    TotalCSOPNoTaxExemptBef    REAL NOT NULL DEFAULT 0,
    TotalCSOPStockGains        REAL NOT NULL DEFAULT 0,
    TotalCSOPStockGainsBef     REAL NOT NULL DEFAULT 0,
    TotalNSOPTaxExempt         REAL NOT NULL DEFAULT 0,  -- Section D (ERIS start-ups)
    TotalNSOPTaxExemptBef      REAL NOT NULL DEFAULT 0,
    TotalNSOPNoTaxExempt       REAL NOT NULL DEFAULT 0,
    TotalNSOPNoTaxExemptBef    REAL NOT NULL DEFAULT 0,
    TotalNSOPStockGains        REAL NOT NULL DEFAULT 0,
    TotalNSOPStockGainsBef     REAL NOT NULL DEFAULT 0,
    GrandTotalStockGains       REAL NOT NULL DEFAULT 0,  -- all sections, all plans
    PRIMARY KEY (PersonalSysId, YEYear)
);
CREATE INDEX A8B_YearPerson ON A8B (YEYear, PersonalSysId);

-- Appendix 8B share-plan rows; StockOptionType puts a row in a section:
-- 'ESOP' A, 'EESOP' B, 'CSOP' C, 'NSOP' D.
CREATE TABLE A8BRecord (
    PersonalSysId          INTEGER NOT NULL,
    YEYear                 INTEGER NOT NULL,
    A8BRecordSysId         INTEGER NOT NULL,
    StockOptionType        TEXT NOT NULL DEFAULT 'ESOP',
    CompanyIDType          TEXT NOT NULL DEFAULT '',  -- keyword, category CompanyIDType
    RCBNo                  TEXT NOT NULL DEFAULT '',  -- company registration no., 12
    CompanyName            TEXT NOT NULL DEFAULT '',  -- 40
    TypePlanGranted        TEXT NOT NULL DEFAULT '',  -- keyword 'ESOP' or 'ESOW'
    DateStockGranted       TEXT NOT NULL DEFAULT '1899-12-30',
    DateExerciseStock      TEXT NOT NULL DEFAULT '1899-12-30',
    -- Prices per share (up to 5 decimals) and the number of shares are
    -- NUMERIC, not REAL money: an amended row carries them as they are, while
    -- its amounts become the difference from what was submitted.
    ExercisePriceStock     NUMERIC NOT NULL DEFAULT 0,
    MktValueStockGrant     NUMERIC NOT NULL DEFAULT 0,
    MktValueExerciseStock  NUMERIC NOT NULL DEFAULT 0,
    SharesAcquired         NUMERIC NOT NULL DEFAULT 0,
    EESOPTaxExempt         REAL NOT NULL DEFAULT 0,
    CSOPTaxExempt          REAL NOT NULL DEFAULT 0,
    NSOPTaxExempt          REAL NOT NULL DEFAULT 0,
    NoTaxExempt            REAL NOT NULL DEFAULT 0,
    StockGains             REAL NOT NULL DEFAULT 0,
    DateIncorporation      TEXT NOT NULL DEFAULT '1899-12-30',  -- of the granting company
    PRIMARY KEY (PersonalSysId, YEYear, A8BRecordSysId)
);
CREATE INDEX A8BRecord_YearPerson ON A8BRecord (YEYear, PersonalSysId);

-- Keyword codes. YEKeyWordId is what the payroll stores and is unique across
-- categories; the YEProperty columns hold IRAS's codes (which one is given in
-- keywords.sql for each category).
CREATE TABLE YEKeyWord (
    YEKeyWordId               TEXT NOT NULL PRIMARY KEY,
    YEKeyWordCategory         TEXT NOT NULL,
    YEKeywordDefaultName      TEXT NOT NULL DEFAULT '',
    YEKeywordUserDefinedName  TEXT NOT NULL DEFAULT '',
    YEProperty1               TEXT NOT NULL DEFAULT '',
    YEProperty2               TEXT NOT NULL DEFAULT '',
    YEProperty3               TEXT NOT NULL DEFAULT ''
);
CREATE INDEX YEKeyWord_Category ON YEKeyWord (YEKeyWordCategory);

-- The last generation of each return per employer ('CurIR8A', 'SupIR8A',
-- 'IR8S', 'A8A', 'A8B', 'All').
CREATE TABLE LastSubmission (
    YEEmployerId            TEXT NOT NULL,
    SubmissionType          TEXT NOT NULL,
    IsOriginal              INTEGER NOT NULL DEFAULT 1,
    SubmitUserId            TEXT NOT NULL DEFAULT '',
    LastSubmissionDateTime  TEXT NOT NULL DEFAULT '1899-12-30 00:00:00',
    YEYear                  INTEGER NOT NULL,
    PRIMARY KEY (YEEmployerId, SubmissionType)
);

-- Registry of settings. The row ('YEPRocess', 'TaxEmployerBasisYear') holds
-- the employer (RegProperty1) and basis year (RegProperty2) of the current
-- run; the engine's views read it.
CREATE TABLE subregistry (
    RegistryId     TEXT NOT NULL COLLATE NOCASE,
    SubRegistryId  TEXT NOT NULL COLLATE NOCASE,
    RegProperty1   TEXT NOT NULL DEFAULT '',
    RegProperty2   TEXT NOT NULL DEFAULT '',
    RegProperty3   TEXT NOT NULL DEFAULT '',
    RegProperty4   TEXT NOT NULL DEFAULT '',
    RegProperty5   TEXT NOT NULL DEFAULT '',
    RegDesc        TEXT NOT NULL DEFAULT '',
    PRIMARY KEY (RegistryId, SubRegistryId)
);

-- A row grants a user one module ('YEIRASDirect', 'YEDirectCurIR8ARpt', ...).
CREATE TABLE UserModuleRights (
    UserId    TEXT NOT NULL,
    ModuleId  TEXT NOT NULL,
    PRIMARY KEY (UserId, ModuleId)
);

-- Look-up tables of the database functions FGetPersonalName,
-- FGetEmployeeIdByPersonalSysId, FGetEmployeeSysId and FGetIRASEmployeeBank.
CREATE TABLE Personal (
    PersonalSysId  INTEGER NOT NULL PRIMARY KEY,
    PersonalName   TEXT NOT NULL DEFAULT '',
    DateOfBirth    TEXT NOT NULL DEFAULT '1899-12-30'
);

CREATE TABLE Employee (
    EmployeeSysId  INTEGER NOT NULL PRIMARY KEY,
    EmployeeCode   TEXT NOT NULL,   -- the employee id shown to users
    PersonalSysId  INTEGER NOT NULL,
    DateJoined     TEXT NOT NULL DEFAULT '1899-12-30',
    DateLeft       TEXT NOT NULL DEFAULT '1899-12-30'
);
CREATE UNIQUE INDEX Employee_Code ON Employee (EmployeeCode);
CREATE INDEX Employee_Person ON Employee (PersonalSysId);

-- IRASBankCode: '1' DBS/POSB, '2' UOB, '3' OCBC, '4' others.
CREATE TABLE EmployeeBank (
    EmployeeSysId  INTEGER NOT NULL,
    IRASBankCode   TEXT NOT NULL DEFAULT '',
    BankName       TEXT NOT NULL DEFAULT '',
    BankAccountNo  TEXT NOT NULL DEFAULT '',
    PRIMARY KEY (EmployeeSysId, BankAccountNo)
);
