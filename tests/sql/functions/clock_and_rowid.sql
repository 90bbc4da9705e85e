-- The clock's texts: always as long, and one moment for a whole statement.
SELECT CHAR_LENGTH(CURRENT_DATE), CHAR_LENGTH(CURRENT_TIME), CHAR_LENGTH(CURRENT_TIMESTAMP);
--> 10|8|19
SELECT CURRENT_DATE LIKE '____-__-__', CURRENT_TIME LIKE '__:__:__', CURRENT_TIMESTAMP LIKE '____-__-__ __:__:__';
--> 1|1|1
SELECT CURRENT_TIMESTAMP = CURRENT_DATE + ' ' + CURRENT_TIME, CURRENT_DATE() = current_date, CURRENT_DATE > '2020-01-01';
--> 1|1|1
CREATE TABLE c (day date, clock time, stamp timestamp);
INSERT INTO c VALUES (CURRENT_DATE, CURRENT_TIME, CURRENT_TIMESTAMP);
SELECT COUNT(*) FROM c WHERE stamp LIKE '____-__-__ __:__:__' AND day > '2020-01-01' AND clock <= '24';
--> 1

-- LAST_ROWID: what the table handed out last, exactly so called.
SELECT LAST_ROWID('c'), LAST_ROWID('C'), LAST_ROWID('nosuch'), LAST_ROWID('_TABLES');
--> 1|NULL|NULL|NULL
INSERT INTO c (_rowid, day) VALUES (7, '1994-07-09');
SELECT LAST_ROWID('c');
--> 7
INSERT INTO c (_rowid, day) VALUES (3, '1994-07-09');
SELECT LAST_ROWID('c');
--> 3
INSERT INTO c (day) VALUES ('1994-07-09');
SELECT LAST_ROWID('c'), COUNT(*), LAST_ROWID('_'+'schema') FROM c;
--> 8|4|10
INSERT INTO c (_rowid, day) VALUES (8, '1994-07-09');
--! 23000 Constraint violation.
SELECT LAST_ROWID('c');
--> 8
INSERT INTO c (_rowid, day) VALUES (LAST_ROWID('c') + 10, '1994-07-10');
SELECT LAST_ROWID('c');
--> 18
SELECT LAST_ROWID(c) FROM c;
--! 42S22 Error: Column c not found.
