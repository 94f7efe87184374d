-- The address book's own tables on SQLite. Lengths are the limits of the editors.
-- An INTEGER PRIMARY KEY is assigned by SQLite. AUTOINCREMENT prevents the reuse of a deleted row's
-- id, which may still be in memberships.

CREATE TABLE SMS_ABFOLDERS (
  ID                       INTEGER PRIMARY KEY AUTOINCREMENT,
  TYPE                     CHAR(1)      NOT NULL,            -- L local, S shared, R shared remote
  NAME                     VARCHAR(100) NOT NULL,
  PARENTFOLDERID           INTEGER      NOT NULL DEFAULT 0,
  USER_ID                  INTEGER,
  REMOTE_CONTACTS_CATEGORY VARCHAR(100)
);
-- Not unique: a remote folder may have the name of another folder.
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
  NAME      VARCHAR(100) NOT NULL UNIQUE,                    -- looks up the id of a new group
  FOLDER_ID INTEGER      NOT NULL DEFAULT 0
);
CREATE INDEX IX_SMS_ABGROUPS_FOLDER ON SMS_ABGROUPS (FOLDER_ID);

-- The component inserts without a column list and relies on this column order.
CREATE TABLE SMS_ABGROUPMAPS (
  GROUP_ID     INTEGER     NOT NULL,
  CONTACT_ID   VARCHAR(50) NOT NULL,                         -- a contact's id or a remote contact's code
  CONTACT_TYPE CHAR(1)     NOT NULL                          -- S contact, R remote contact
);
CREATE INDEX IX_SMS_ABGROUPMAPS_GROUP ON SMS_ABGROUPMAPS (GROUP_ID);
CREATE INDEX IX_SMS_ABGROUPMAPS_CONTACT ON SMS_ABGROUPMAPS (CONTACT_ID);
