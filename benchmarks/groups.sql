-- What the group dialog is measured on. Folders 101 to 104 hold so many contacts; folders 201 to 204
-- so many groups of 100 contacts each; group 1001 has 10,000 members.
INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, PARENTFOLDERID, USER_ID, REMOTE_CONTACTS_CATEGORY) VALUES
  (101, 'S', '10,000 contacts', 0, 1, ''), (102, 'S', '20,000 contacts', 0, 1, ''),
  (103, 'S', '100,000 contacts', 0, 1, ''), (104, 'S', '200,000 contacts', 0, 1, ''),
  (201, 'S', '100 groups', 0, 1, ''), (202, 'S', '200 groups', 0, 1, ''),
  (203, 'S', '1,000 groups', 0, 1, ''), (204, 'S', '2,000 groups', 0, 1, '');

CREATE TEMP TABLE Sizes (Folder, Count);
INSERT INTO Sizes VALUES (101, 10000), (102, 20000), (103, 100000), (104, 200000),
  (201, 100), (202, 200), (203, 1000), (204, 2000);
CREATE TEMP TABLE Numbers AS
  WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200000) SELECT i FROM n;

INSERT INTO SMS_ABCONTACTS (FOLDER_ID, FNAME, LNAME, COUNTRYCODE, MOBILENO)
  SELECT Folder, 'Contact ' || i, 'Family ' || (i * 7919) % 5003, '91', 9000000000 + i
  FROM Sizes, Numbers WHERE Folder < 200 AND i <= Count ORDER BY Folder, i;

INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (1001, 'Ten thousand', 0);
INSERT INTO SMS_ABGROUPMAPS SELECT 1001, ID, 'S' FROM SMS_ABCONTACTS WHERE FOLDER_ID = 101;

INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID)
  SELECT Folder * 10000 + i, 'Group ' || Folder || '-' || i, Folder
  FROM Sizes, Numbers WHERE Folder > 200 AND i <= Count;
INSERT INTO SMS_ABGROUPMAPS
  SELECT g.ID, c.ID, 'S'
  FROM SMS_ABGROUPS g, Numbers n, SMS_ABCONTACTS c
  WHERE g.FOLDER_ID > 200 AND n.i <= 100
    AND c.ID = 130012 + (g.ID * 7919 + n.i * 104729) % 200000;
ANALYZE;
