-- The address book's own tables on SQLite. Lengths are those that the editors let a user type.
-- A column declared INTEGER PRIMARY KEY is assigned by the engine; AUTOINCREMENT keeps the id of a
-- deleted row from coming back as somebody else's in the memberships that the row left behind.

CREATE TABLE SMS_ABFOLDERS (
  ID                       INTEGER PRIMARY KEY AUTOINCREMENT,
  TYPE                     CHAR(1)      NOT NULL,            -- L local, S shared, R shared remote
  NAME                     VARCHAR(100) NOT NULL,
  PARENTFOLDERID           INTEGER      NOT NULL DEFAULT 0,
  USER_ID                  INTEGER,
  REMOTE_CONTACTS_CATEGORY VARCHAR(100)
);
-- Not unique: a remote folder may be named like any other folder.
CREATE INDEX IX_SMS_ABFOLDERS_NAME ON SMS_ABFOLDERS (NAME);
CREATE INDEX IX_SMS_ABFOLDERS_CATEGORY ON SMS_ABFOLDERS (REMOTE_CONTACTS_CATEGORY);

CREATE TABLE SMS_ABCONTACTS (
  ID           INTEGER PRIMARY KEY AUTOINCREMENT,
  FOLDER_ID    INTEGER NOT NULL DEFAULT 0,                   -- 0: the main folder
  FNAME        VARCHAR(50),
  MNAME        VARCHAR(50),
  LNAME        VARCHAR(50),
  COUNTRYCODE  VARCHAR(10),
  MOBILENO     VARCHAR(20),
  OFFICEPHONE  VARCHAR(20),
  HOMEPHONE    VARCHAR(20),
  FAX          VARCHAR(20),
  EMAIL        VARCHAR(50),
  ORGANISATION VARCHAR(50),
  ADDRESS      VARCHAR(50),
  CITY         VARCHAR(50),
  STATE        VARCHAR(50),
  COUNTRY      VARCHAR(50),
  ZIP          VARCHAR(20),
  AGE          INTEGER,
  SEX          CHAR(1),                                      -- M, F or null
  BIRTHDAY     DATE,
  ANNIVERSARY  DATE,
  HOBBY        VARCHAR(100)
);
CREATE INDEX IX_SMS_ABCONTACTS_FOLDER ON SMS_ABCONTACTS (FOLDER_ID);

CREATE TABLE SMS_ABGROUPS (
  ID        INTEGER PRIMARY KEY AUTOINCREMENT,
  NAME      VARCHAR(100) NOT NULL UNIQUE,                    -- a new group's id is read back by it
  FOLDER_ID INTEGER      NOT NULL DEFAULT 0
);
CREATE INDEX IX_SMS_ABGROUPS_FOLDER ON SMS_ABGROUPS (FOLDER_ID);

-- The order of the columns is relied upon by an insert that names none.
CREATE TABLE SMS_ABGROUPMAPS (
  GROUP_ID     INTEGER     NOT NULL,
  CONTACT_ID   VARCHAR(50) NOT NULL,                         -- a contact's id or a remote contact's code
  CONTACT_TYPE CHAR(1)     NOT NULL                          -- S contact, R remote contact
);
CREATE INDEX IX_SMS_ABGROUPMAPS_GROUP ON SMS_ABGROUPMAPS (GROUP_ID);
CREATE INDEX IX_SMS_ABGROUPMAPS_CONTACT ON SMS_ABGROUPMAPS (CONTACT_ID);
