-- Adds :contacts generated contacts to folder :folder, the same ones each time.
-- Names meet at random but repeatably: each contact's number is spread by a large odd factor.
CREATE TEMP TABLE first_name (id INTEGER PRIMARY KEY, male INTEGER, name TEXT, ascii TEXT);
INSERT INTO first_name (male, name, ascii) VALUES
  (0, 'Aarti', 'aarti'), (1, 'Ajay', 'ajay'), (0, 'Ana María', 'ana.maria'), (1, 'Ángel', 'angel'),
  (1, 'Arjun', 'arjun'), (0, 'Åsa', 'asa'), (1, 'Bruno', 'bruno'), (0, 'Chloé', 'chloe'),
  (1, 'Çağan', 'cagan'), (1, 'Daniel', 'daniel'), (0, 'Deepa', 'deepa'), (0, 'Élodie', 'elodie'),
  (1, 'Étienne', 'etienne'), (0, 'Fátima', 'fatima'), (1, 'François', 'francois'), (0, 'Grace', 'grace'),
  (1, 'Günther', 'gunther'), (0, 'Hélène', 'helene'), (1, 'Imran', 'imran'), (0, 'Ingrid', 'ingrid'),
  (1, 'Jiří', 'jiri'), (0, 'Joanna', 'joanna'), (1, 'José', 'jose'), (0, 'Kavita', 'kavita'),
  (1, 'Łukasz', 'lukasz'), (0, 'Małgorzata', 'malgorzata'), (1, 'Mahesh', 'mahesh'), (0, 'Meera', 'meera'),
  (1, 'Mohammed', 'mohammed'), (0, 'Nandini', 'nandini'), (1, 'Nikhil', 'nikhil'), (0, 'Noémie', 'noemie'),
  (1, 'Óscar', 'oscar'), (0, 'Patricia', 'patricia'), (1, 'Pradeep', 'pradeep'), (0, 'Priya', 'priya'),
  (1, 'Rahul', 'rahul'), (0, 'Renée', 'renee'), (1, 'Søren', 'soren'), (0, 'Sunita', 'sunita'),
  (1, 'Suresh', 'suresh'), (0, 'Zoë', 'zoe'), (1, 'Vikram', 'vikram'), (0, 'Žofie', 'zofie'),
  (1, 'राजेश', 'rajesh'), (0, 'सीता', 'sita'), (1, 'विनोद', 'vinod'), (0, 'लक्ष्मी', 'lakshmi');

CREATE TEMP TABLE last_name (id INTEGER PRIMARY KEY, name TEXT, ascii TEXT);
INSERT INTO last_name (name, ascii) VALUES
  ('Agarwal', 'agarwal'), ('Andersson', 'andersson'), ('Banerjee', 'banerjee'), ('Bhatt', 'bhatt'),
  ('Castañeda', 'castaneda'), ('Chaudhary', 'chaudhary'), ('Čapek', 'capek'), ('D''Souza', 'dsouza'),
  ('Deshpande', 'deshpande'), ('Dvořák', 'dvorak'), ('Fernandes', 'fernandes'), ('Gonçalves', 'goncalves'),
  ('Gupta', 'gupta'), ('Håkansson', 'hakansson'), ('Iyer', 'iyer'), ('Jadhav', 'jadhav'),
  ('Joshi', 'joshi'), ('Kowalski', 'kowalski'), ('Krishnamurthy', 'krishnamurthy'), ('Kulkarni', 'kulkarni'),
  ('Lefèvre', 'lefevre'), ('Mehta', 'mehta'), ('Menon', 'menon'), ('Müller', 'muller'),
  ('Nair', 'nair'), ('Núñez', 'nunez'), ('O''Brien', 'obrien'), ('Öztürk', 'ozturk'),
  ('Patel', 'patel'), ('Peña', 'pena'), ('Pillai', 'pillai'), ('Rao', 'rao'),
  ('Reddy', 'reddy'), ('Sharma', 'sharma'), ('Shetty', 'shetty'), ('Singh', 'singh'),
  ('Strauß', 'strauss'), ('Subramaniam', 'subramaniam'), ('Thomas', 'thomas'), ('Van der Berg', 'vanderberg'),
  ('Verma', 'verma'), ('Wójcik', 'wojcik'), ('Yadav', 'yadav'),
  ('कुमार', 'kumar'), ('पाटिल', 'patil'), ('शर्मा', 'sharma'), ('त्रिपाठी', 'tripathi');

CREATE TEMP TABLE place (id INTEGER PRIMARY KEY, street, city, state, country, code, zip);
INSERT INTO place (street, city, state, country, code, zip) VALUES
  ('M. G. Road', 'Pune', 'Maharashtra', 'India', '91', 411001),
  ('Linking Road', 'Mumbai', 'Maharashtra', 'India', '91', 400050),
  ('Brigade Road', 'Bengaluru', 'Karnataka', 'India', '91', 560025),
  ('Anna Salai', 'Chennai', 'Tamil Nadu', 'India', '91', 600002),
  ('महात्मा गांधी मार्ग', 'जयपुर', 'राजस्थान', 'India', '91', 302001),
  ('Rue de la République', 'Lyon', 'Rhône', 'France', '33', 69002),
  ('Königstraße', 'Stuttgart', 'Baden-Württemberg', 'Germany', '49', 70173),
  ('Calle de Alcalá', 'Madrid', '', 'Spain', '34', 28009),
  ('Götgatan', 'Stockholm', '', 'Sweden', '46', 11646),
  ('Vodičkova', 'Praha', '', 'Czechia', '420', 11000),
  ('Deansgate', 'Manchester', '', 'United Kingdom', '44', 33200),
  ('Sheikh Zayed Road', 'Dubai', '', 'U.A.E.', '971', 0);

CREATE TEMP TABLE company (id INTEGER PRIMARY KEY, name, domain);
INSERT INTO company (name, domain) VALUES
  ('', 'mail.example'), ('Sahyadri Traders', 'sahyadri.example'), ('Nordwind Logistik', 'nordwind.example'),
  ('Atelier Lumière', 'lumiere.example'), ('Blue Harbour Ltd.', 'blueharbour.example'),
  ('Ganga Textiles', 'ganga.example'), ('', 'post.example'), ('Café Señorial', 'senorial.example');

WITH RECURSIVE number(n) AS (
  SELECT 1 UNION ALL SELECT n + 1 FROM number LIMIT :contacts
), spread AS (
  SELECT n, (n * 2654435761) % 4294967296 AS h FROM number
)
INSERT INTO SMS_ABCONTACTS (FOLDER_ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO, OFFICEPHONE,
  HOMEPHONE, FAX, EMAIL, ORGANISATION, ADDRESS, CITY, STATE, COUNTRY, ZIP, AGE, SEX, HOBBY)
SELECT :folder, f.name, CASE WHEN h % 5 = 0 THEN char(65 + h % 26) || '.' ELSE '' END, l.name,
  p.code, CAST(7000000000 + h % 2999999999 AS TEXT),
  CASE WHEN h % 3 = 0 THEN '20' || (2000000 + h % 7999999) ELSE '' END, '', '',
  f.ascii || '.' || l.ascii || n || '@' || c.domain, c.name,
  (1 + h % 240) || ', ' || p.street, p.city, p.state, p.country, CASE WHEN p.zip THEN CAST(p.zip + h % 90 AS TEXT) ELSE '' END,
  CASE WHEN h % 4 = 0 THEN 18 + h % 60 END, CASE WHEN f.male THEN 'M' ELSE 'F' END, ''
FROM spread
CROSS JOIN first_name f ON f.id = 1 + h / 7 % 48
CROSS JOIN last_name l ON l.id = 1 + h / 1009 % 47
CROSS JOIN place p ON p.id = 1 + h / 99991 % 12
CROSS JOIN company c ON c.id = 1 + h / 131071 % 8;
