-- A small company's address book to look at and play with. User 1 is an administrator.

INSERT INTO SMS_USERS (ID, NAME, ADMIN, DISABLED, DELETED) VALUES
  (1, 'Administrator', 1, 0, 0),
  (2, 'Front desk', 0, 0, 0),
  (3, 'On leave', 0, 1, 0),
  (4, 'Left the company', 1, 0, 1);

INSERT INTO ZUL$CONTACTS_CATEGORY (CATEGORY) VALUES ('Customers'), ('Dealers'), ('Suppliers');

INSERT INTO ZUL$CONTACTS (CODE, NAME, MOBILENO, EMAIL, CATEGORY) VALUES
  ('C0001', 'Harbour Lights Hotel', '919820011223', 'desk@harbourlights.example', 'Customers'),
  ('C0002', 'Lindqvist & Söner', '46701740605', 'order@lindqvist.example', 'Customers'),
  ('C0003', 'Sharma Textiles', '919811004455', 'sales@sharmatextiles.example', 'Customers'),
  ('D0001', 'Northern Dealers', '919899887766', 'north@dealers.example', 'Dealers'),
  ('D0002', 'Coastal Dealers', '919833221100', 'coast@dealers.example', 'Dealers'),
  ('D0003', 'Dealer «Łódź Południe»', '48601222333', 'lodz@dealers.example', 'Dealers'),
  ('S0001', 'Paper & Ink Supply', '442079460011', 'supply@paperink.example', 'Suppliers');

INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, PARENTFOLDERID, USER_ID, REMOTE_CONTACTS_CATEGORY) VALUES
  (1, 'S', 'Customers', 0, 1, ''),
  (2, 'S', 'Field Staff', 0, 1, ''),
  (3, 'R', 'TALVERO Dealers', 0, 1, 'Dealers'),
  (4, 'R', 'TALVERO Customers', 0, 1, 'Customers');

INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO, OFFICEPHONE,
    EMAIL, ORGANISATION, ADDRESS, CITY, STATE, COUNTRY, ZIP, AGE, SEX, BIRTHDAY, HOBBY) VALUES
  (1, 0, 'Anna', 'Maria', 'Lindgren', '46', '701740611', '084650011', 'anna.lindgren@example.org',
   'Lindgren Design', 'Storgatan 12', 'Stockholm', '', 'Sweden', '111 22', 41, 'F', '1985-03-14',
   'Sailing'),
  (2, 0, 'Åsa', '', 'Öberg', '46', '701740622', '', 'asa.oberg@example.org', 'Öberg & Co',
   'Kungsgatan 3', 'Uppsala', '', 'Sweden', '753 20', NULL, 'F', NULL, ''),
  (3, 0, 'Priya', '', 'Sharma', '91', '9820012345', '02226512345', 'priya.sharma@example.in',
   'Monsoon Media', '14 Marine Drive', 'Mumbai', 'Maharashtra', 'India', '400020', 33, 'F',
   '1993-07-02', 'Photography'),
  (4, 0, 'राजेश', '', 'कुमार', '91', '9811123456', '', 'rajesh.kumar@example.in', 'दिल्ली प्रिंटर्स',
   '7 Lodi Road', 'New Delhi', 'Delhi', 'India', '110003', 47, 'M', NULL, ''),
  (5, 0, 'John', 'Q', 'O''Neill', '44', '7700900123', '', 'john@example.co.uk', 'Harbour Freight',
   '5 Quay Street', 'Bristol', '', 'United Kingdom', 'BS1 4DJ', NULL, 'M', NULL, 'Rowing'),
  (6, 0, 'Éloïse', '', 'Dupont', '33', '612345678', '', 'eloise.dupont@example.fr',
   'Atelier Dupont', '22 rue de la Paix', 'Lyon', '', 'France', '69002', 29, 'F', NULL, ''),
  (7, 0, 'Zoltán', '', 'Kovács', '36', '301234567', '', 'zoltan@example.hu', '', 'Fő utca 8',
   'Győr', '', 'Hungary', '9021', NULL, 'M', NULL, 'Chess'),
  (8, 0, 'Control', '', 'Room', '', '5550100', '', '', 'This company', '', '', '', '', '', NULL,
   NULL, NULL, ''),
  (9, 1, 'Maria', '', 'Garcia', '34', '600111222', '', 'maria@example.es', 'Garcia Hermanos',
   'Calle Mayor 1', 'Madrid', '', 'Spain', '28013', NULL, 'F', NULL, ''),
  (10, 1, 'Tom', 'B', 'Baker', '1', '2025550143', '', 'tom.baker@example.com', 'Baker & Sons',
   '400 K Street', 'Washington', 'DC', 'USA', '20001', 58, 'M', NULL, 'Baking'),
  (11, 2, 'Sunil', '', 'Patel', '91', '9898098980', '', 'sunil@example.in', 'This company', '',
   'Surat', 'Gujarat', 'India', '395003', 26, 'M', NULL, 'Cricket'),
  (12, 2, 'Fatima', '', 'Khan', '91', '9898098981', '', 'fatima@example.in', 'This company', '',
   'Surat', 'Gujarat', 'India', '395007', 31, 'F', NULL, '');

INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES
  (1, 'Night Shift', 0),
  (2, 'Management', 0),
  (3, 'Delivery Drivers', 2);

INSERT INTO SMS_ABGROUPMAPS (GROUP_ID, CONTACT_ID, CONTACT_TYPE) VALUES
  (1, '5', 'S'), (1, '7', 'S'), (1, '8', 'S'),
  (2, '1', 'S'), (2, '3', 'S'), (2, 'D0001', 'R'),
  (3, '11', 'S'), (3, '12', 'S');
