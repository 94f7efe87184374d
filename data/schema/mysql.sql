-- The address book's own tables on MariaDB (10.3 or later) and MySQL (8.0.23 or later).
-- Lengths are the limits of the editors, in characters.
-- AUTO_INCREMENT assigns unique ids also for concurrent inserts and in a cluster; ids may have
-- gaps.
-- The component reads a new id back on its own connection.
-- The collation ignores case and accents.

CREATE TABLE SMS_ABFOLDERS (
  ID                       INTEGER      NOT NULL AUTO_INCREMENT PRIMARY KEY,
  TYPE                     CHAR(1)      NOT NULL,            -- L local, S shared, R shared remote
  NAME                     VARCHAR(100) NOT NULL,
  PARENTFOLDERID           INTEGER      NOT NULL DEFAULT 0,
  USER_ID                  INTEGER,
  REMOTE_CONTACTS_CATEGORY VARCHAR(100),
  INDEX IX_SMS_ABFOLDERS_NAME (NAME),                        -- a remote folder may share a name
  INDEX IX_SMS_ABFOLDERS_CATEGORY (REMOTE_CONTACTS_CATEGORY)
) ENGINE = InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_unicode_520_ci;

CREATE TABLE SMS_ABCONTACTS (
  ID           INTEGER NOT NULL AUTO_INCREMENT PRIMARY KEY,
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
  AGE          DOUBLE,                                       -- the editor lets 1.5 be pasted
  SEX          CHAR(1),                                      -- M, F or null
  BIRTHDAY     DATE,
  ANNIVERSARY  DATE,
  HOBBY        VARCHAR(100),
  INDEX IX_SMS_ABCONTACTS_FOLDER (FOLDER_ID)
) ENGINE = InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_unicode_520_ci;

CREATE TABLE SMS_ABGROUPS (
  ID        INTEGER      NOT NULL AUTO_INCREMENT PRIMARY KEY,
  NAME      VARCHAR(100) NOT NULL UNIQUE,                    -- looks up the id of a new group
  FOLDER_ID INTEGER      NOT NULL DEFAULT 0,
  INDEX IX_SMS_ABGROUPS_FOLDER (FOLDER_ID)
) ENGINE = InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_unicode_520_ci;

-- The component inserts without a column list and relies on this column order. The invisible key
-- identifies the rows for replication.
CREATE TABLE SMS_ABGROUPMAPS (
  GROUP_ID     INTEGER     NOT NULL,
  CONTACT_ID   VARCHAR(50) NOT NULL,                         -- a contact's id or a remote contact's code
  CONTACT_TYPE CHAR(1)     NOT NULL,                         -- S contact, R remote contact
  ROW_ID       BIGINT      NOT NULL AUTO_INCREMENT INVISIBLE PRIMARY KEY,
  INDEX IX_SMS_ABGROUPMAPS_GROUP (GROUP_ID, CONTACT_TYPE, CONTACT_ID),
  INDEX IX_SMS_ABGROUPMAPS_CONTACT (CONTACT_ID)
) ENGINE = InnoDB DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_unicode_520_ci;
