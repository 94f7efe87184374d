-- The address book's own tables on SQL Server (2012 or later), for sqlcmd.
-- Lengths are the limits of the editors, in UTF-16 units.
-- An identity column assigns the ids. The component reads a new contact's id with @@IDENTITY of its
-- session, so no trigger on SMS_ABCONTACTS may insert into another table with an identity column.
-- Dates are DATETIME, which every driver for SQL Server reports as a date.

CREATE TABLE SMS_ABFOLDERS (
  ID                       INT IDENTITY(1, 1) NOT NULL PRIMARY KEY,
  TYPE                     NCHAR(1)      NOT NULL,           -- L local, S shared, R shared remote
  NAME                     NVARCHAR(100) NOT NULL,
  PARENTFOLDERID           INT           NOT NULL DEFAULT 0,
  USER_ID                  INT,
  REMOTE_CONTACTS_CATEGORY NVARCHAR(100)
);
-- Not unique: a remote folder may have the name of another folder.
CREATE INDEX IX_SMS_ABFOLDERS_NAME ON SMS_ABFOLDERS (NAME);
CREATE INDEX IX_SMS_ABFOLDERS_CATEGORY ON SMS_ABFOLDERS (REMOTE_CONTACTS_CATEGORY);

CREATE TABLE SMS_ABCONTACTS (
  ID           INT IDENTITY(1, 1) NOT NULL PRIMARY KEY,
  FOLDER_ID    INT NOT NULL DEFAULT 0,                       -- 0: the main folder
  FNAME        NVARCHAR(50),
  MNAME        NVARCHAR(50),
  LNAME        NVARCHAR(50),
  COUNTRYCODE  NVARCHAR(10),
  MOBILENO     NVARCHAR(20),
  OFFICEPHONE  NVARCHAR(20),
  HOMEPHONE    NVARCHAR(20),
  FAX          NVARCHAR(20),
  EMAIL        NVARCHAR(50),
  ORGANISATION NVARCHAR(50),
  ADDRESS      NVARCHAR(50),
  CITY         NVARCHAR(50),
  STATE        NVARCHAR(50),
  COUNTRY      NVARCHAR(50),
  ZIP          NVARCHAR(20),
  AGE          FLOAT,                                        -- the editor lets 1.5 be pasted
  SEX          NCHAR(1),                                     -- M, F or null
  BIRTHDAY     DATETIME,
  ANNIVERSARY  DATETIME,
  HOBBY        NVARCHAR(100)
);
CREATE INDEX IX_SMS_ABCONTACTS_FOLDER ON SMS_ABCONTACTS (FOLDER_ID);

CREATE TABLE SMS_ABGROUPS (
  ID        INT IDENTITY(1, 1) NOT NULL PRIMARY KEY,
  NAME      NVARCHAR(100) NOT NULL UNIQUE,                   -- looks up the id of a new group
  FOLDER_ID INT           NOT NULL DEFAULT 0
);
CREATE INDEX IX_SMS_ABGROUPS_FOLDER ON SMS_ABGROUPS (FOLDER_ID);

-- The component inserts without a column list and relies on this column order. SQL Server converts
-- CONTACT_ID to a number to compare it with a contact's id, so a group with a non-numeric remote
-- member cannot be listed.
CREATE TABLE SMS_ABGROUPMAPS (
  GROUP_ID     INT          NOT NULL,
  CONTACT_ID   NVARCHAR(50) NOT NULL,                        -- a contact's id or a remote contact's code
  CONTACT_TYPE NCHAR(1)     NOT NULL                         -- S contact, R remote contact
);
CREATE CLUSTERED INDEX IX_SMS_ABGROUPMAPS_GROUP ON SMS_ABGROUPMAPS (GROUP_ID);
CREATE INDEX IX_SMS_ABGROUPMAPS_CONTACT ON SMS_ABGROUPMAPS (CONTACT_ID);
GO
