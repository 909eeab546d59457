-- Keyword codes and the registry rows that every payroll database holds, with
-- or without sample data. A keyword row maps the id that the payroll stores
-- (YEKeyWordId) to IRAS's code for it:
--   EmployerSource      YEProperty3 = IRAS source code (header position 2)
--   OrganisationIDType  YEProperty1 = IRAS organisation id type (header)
--   PayeeIDType         YEProperty3 = IRAS id type digit (detail position 2),
--                       YEProperty1 the same digit
--   IncomeBorneStatus   YEProperty1 = F, P, H or N
--   ExemptIncomeType    YEProperty1 = IRAS exempt/remission income indicator
--   CommissionType      YEProperty1 = M, O or B
--   PlanType            YEProperty1 = ESOP or ESOW
--   CompanyIDType       YEProperty1 = id type of the company granting a share plan
--   SubmitUserIDType    YEProperty1 = the user type id handed to the submission
--                       engine, YEKeywordDefaultName its description
-- Ids are unique across categories, because a stored code is looked up by id
-- alone.

INSERT INTO YEKeyWord (YEKeyWordId, YEKeyWordCategory, YEKeywordDefaultName, YEKeywordUserDefinedName, YEProperty1, YEProperty2, YEProperty3) VALUES
-- Sources of the employer. IRAS no longer lists 2 and 3.
('Mindef',          'EmployerSource', 'Mindef',                '', '', '', '1'),
('GovernmentDept',  'EmployerSource', 'Government Department', '', '', '', '4'),
('StatutoryBoard',  'EmployerSource', 'Statutory Board',       '', '', '', '5'),
('PrivateSector',   'EmployerSource', 'Private Sector',        '', '', '', '6'),
('SourceOthers',    'EmployerSource', 'Others',                '', '', '', '9'),

-- Organisation id types of the employer. G (GST number) is kept so that old
-- employer rows still locate a row; the header check rejects it.
('UEN',             'OrganisationIDType', 'UEN',                      '', '7', '', ''),
('UENLocal',        'OrganisationIDType', 'UEN - Local',              '', '8', '', ''),
('ASGD',            'OrganisationIDType', 'Tax Reference assigned by IRAS (ASGD)', '', 'A', '', ''),
('ITR',             'OrganisationIDType', 'Income Tax Reference (ITR)', '', 'I', '', ''),
('CRN',             'OrganisationIDType', 'Company Registration Number (CRN)', '', 'C', '', ''),
('MCST',            'OrganisationIDType', 'Management Corporation Strata Title (MCST)', '', 'M', '', ''),
('GSTN',            'OrganisationIDType', 'GST Registration Number', '', 'G', '', ''),
('UENO',            'OrganisationIDType', 'UEN - Others',             '', 'U', '', ''),

-- Id types of the payee.
('NRIC',            'PayeeIDType', 'NRIC',                      '', '1', '', '1'),
('FIN',             'PayeeIDType', 'FIN',                       '', '2', '', '2'),
('ImmigrationFileRef', 'PayeeIDType', 'Immigration File Ref No.', '', '3', '', '3'),
('WorkPermit',      'PayeeIDType', 'Work Permit No.',           '', '4', '', '4'),
('MalaysianIC',     'PayeeIDType', 'Malaysian I/C',             '', '5', '', '5'),
('Passport',        'PayeeIDType', 'Passport No.',              '', '6', '', '6'),

-- Employee's income tax borne by the employer.
('Full',            'IncomeBorneStatus', 'Tax fully borne by employer on employment income only', '', 'F', '', ''),
('Partial',         'IncomeBorneStatus', 'Tax partially borne by employer on certain employment income items', '', 'P', '', ''),
('Fixed',           'IncomeBorneStatus', 'A fixed amount of income tax liability borne by employee', '', 'H', '', ''),
('NotApplicable',   'IncomeBorneStatus', 'Not Applicable',          '', 'N', '', ''),

-- Exempt income and income subject to tax remission.
('IncomeTypeOCLA',    'ExemptIncomeType', 'Tax Remission on Overseas Cost of Living Allowance (OCLA)', '', '1', '', ''),
('IncomeTypeOHQ',     'ExemptIncomeType', 'Tax Remission on Operation Headquarters (OHQ)', '', '2', '', ''),
('IncomeTypeSeaman',  'ExemptIncomeType', 'Seaman',                 '', '3', '', ''),
('IncomeTypeExempt',  'ExemptIncomeType', 'Exemption',              '', '4', '', ''),
('IncomeTypeOPFTC',   'ExemptIncomeType', 'Overseas Pension Fund with Tax Concession', '', '5', '', ''),
('IncomeTypeOEOPFTC', 'ExemptIncomeType', 'Overseas employment with Overseas Pension Fund with Tax Concession', '', '6', '', ''),
('IncomeTypeNA',      'ExemptIncomeType', 'Not Applicable',         '', 'N', '', ''),

-- Gross commission.
('CommissionMonthly', 'CommissionType', 'Monthly',                  '', 'M', '', ''),
('CommissionOther',   'CommissionType', 'Other than monthly',       '', 'O', '', ''),
('CommissionBoth',    'CommissionType', 'Both',                     '', 'B', '', ''),

-- Share plans of Appendix 8B.
('ESOP',            'PlanType', 'Employee Share Option Plan', '', 'ESOP', '', ''),
('ESOW',            'PlanType', 'Employee Share Ownership Plan', '', 'ESOW', '', ''),

-- Id types of the company that granted a share plan.
('CompanyROB',      'CompanyIDType', 'ROB No.',                 '', '7', '', ''),
('CompanyROC',      'CompanyIDType', 'ROC No.',                 '', '8', '', ''),
('CompanyASGD',     'CompanyIDType', 'Tax Reference assigned by IRAS (ASGD)', '', 'A', '', ''),
('CompanyITR',      'CompanyIDType', 'Income Tax Reference (ITR)', '', 'I', '', ''),
('CompanyCRN',      'CompanyIDType', 'Company Registration Number (CRN)', '', 'C', '', ''),
('CompanyMCST',     'CompanyIDType', 'Management Corporation Strata Title (MCST)', '', 'M', '', ''),
('CompanyGSTN',     'CompanyIDType', 'GST Registration Number', '', 'G', '', ''),
('CompanyUENO',     'CompanyIDType', 'UEN - Others',            '', 'U', '', ''),

-- How the person submitting directly to IRAS logs in.
('SubmitPersonalLogin',  'SubmitUserIDType', 'Personal Digital Identity',  '', 'PERSONAL',  '', ''),
('SubmitCorporateLogin', 'SubmitUserIDType', 'Corporate Digital Identity', '', 'CORPORATE', '', ''),
('SubmitTaxAgent',       'SubmitUserIDType', 'Tax Agent',                  '', 'TAXAGENT',  '', '');

-- The employer and basis year of the current run; the session form fills it
-- in before every run, so an empty row is enough to start with.
INSERT INTO subregistry (RegistryId, SubRegistryId, RegProperty1, RegProperty2, RegDesc) VALUES
('YEPRocess', 'TaxEmployerBasisYear', '', '', 'Tax employer and basis year of the current IRAS run');
