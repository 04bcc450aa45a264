-- A database as the first version of the program left it.
PRAGMA application_id = 1801809007;
CREATE TABLE patients (id INTEGER PRIMARY KEY, name TEXT NOT NULL, identifier TEXT NOT NULL);
CREATE TABLE treatments (id INTEGER PRIMARY KEY, patient_id INTEGER NOT NULL REFERENCES patients (id) ON DELETE CASCADE, approved_date TEXT);
CREATE TABLE notes (id INTEGER PRIMARY KEY, treatment_id INTEGER NOT NULL REFERENCES treatments (id) ON DELETE CASCADE, date TEXT NOT NULL, UNIQUE (treatment_id, date));
CREATE TABLE tooth_visibilities (note_id INTEGER NOT NULL REFERENCES notes (id) ON DELETE CASCADE, name_key TEXT NOT NULL, visible INTEGER NOT NULL, PRIMARY KEY (note_id, name_key)) WITHOUT ROWID;
CREATE TABLE brackets (note_id INTEGER NOT NULL REFERENCES notes (id) ON DELETE CASCADE, name_key TEXT NOT NULL, visible INTEGER NOT NULL, color_type_id INTEGER, PRIMARY KEY (note_id, name_key)) WITHOUT ROWID;
CREATE TABLE elastics (id INTEGER PRIMARY KEY, note_id INTEGER NOT NULL REFERENCES notes (id) ON DELETE CASCADE, position INTEGER NOT NULL, size_type_id INTEGER, bracket_sequence TEXT NOT NULL);
INSERT INTO patients VALUES (3, 'Sample Patient', 'S-1'), (4, 'Other Patient', 'S-2');
INSERT INTO treatments VALUES (7, 3, NULL), (8, 4, '2024-05-01');
INSERT INTO notes VALUES (10, 7, '2024-03-01'), (11, 7, '2024-01-15'), (12, 8, '2024-02-02');
INSERT INTO tooth_visibilities VALUES (10, '5', 0), (10, '12', 1), (11, '5', 1);
INSERT INTO brackets VALUES (10, '8', 1, 4), (10, '9', 1, NULL), (10, '7', 0, NULL);
INSERT INTO elastics VALUES (20, 10, 5, 3, '6,30'), (21, 10, 2, NULL, '3l,14,19'), (22, 12, 0, 1, '');
PRAGMA user_version = 1;
