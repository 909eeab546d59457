-- Tables of the reference submission engine, loaded after schema.sql.
--
-- The engine keeps what was last submitted in the return tables themselves
-- (YEYear 9 followed by the basis year) and the state before that under
-- 8 followed by the basis year; these two tables hold the rest: the files it
-- was given to submit, and the LastSubmission row as it stood before each
-- submission, so that a reset can put it back.

-- One row per return file accepted for submission (validation-only runs are
-- not recorded).
CREATE TABLE IF NOT EXISTS SubmittedReturnFile (
    SubmittedReturnFileId  INTEGER PRIMARY KEY,
    FileName               TEXT NOT NULL,
    FormType               TEXT NOT NULL DEFAULT '',   -- as the job passed it
    SubmissionType         TEXT NOT NULL DEFAULT '',   -- 'CurIR8A', 'SupIR8A', 'IR8S', 'A8A', 'A8B'
    YEEmployerId           TEXT NOT NULL DEFAULT '',
    YEYear                 INTEGER NOT NULL DEFAULT 0, -- year-end year
    SubmitUserIdType       TEXT NOT NULL DEFAULT '',
    SubmitUserId           TEXT NOT NULL DEFAULT '',
    SessionUserId          TEXT NOT NULL DEFAULT '',
    SubmittedDateTime      TEXT NOT NULL,              -- 'YYYY-MM-DD HH:MM:SS'
    FileSize               INTEGER NOT NULL DEFAULT 0, -- bytes
    DetailRecordCount      INTEGER NOT NULL DEFAULT 0, -- employees in the file
    DeliveryReference      TEXT NOT NULL DEFAULT ''
);
CREATE INDEX IF NOT EXISTS SubmittedReturnFile_Employer
    ON SubmittedReturnFile (YEEmployerId, YEYear, SubmissionType);

-- The reset point of each submission: the LastSubmission row of the employer
-- and type as it was just before (HadLastSubmission 0 when there was none).
CREATE TABLE IF NOT EXISTS LastSubmissionBackup (
    YEEmployerId            TEXT NOT NULL,
    SubmissionType          TEXT NOT NULL,
    YEYear                  INTEGER NOT NULL,  -- year-end year of the submission it undoes
    SavedDateTime           TEXT NOT NULL,
    HadLastSubmission       INTEGER NOT NULL DEFAULT 0,
    IsOriginal              INTEGER,
    SubmitUserId            TEXT,
    LastSubmissionDateTime  TEXT,
    LastYEYear              INTEGER,
    PRIMARY KEY (YEEmployerId, SubmissionType, YEYear)
);
