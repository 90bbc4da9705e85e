-- Every kind of value into every type of column.
CREATE TABLE v (i integer, d double, s string, b boolean, day date, clock time, stamp timestamp, x binary);

INSERT INTO v VALUES (42, 42, 42, 42, 42, 42, 42, 42);
INSERT INTO v VALUES (0, 0, 0, 0, 0, 0, 0, 0);
INSERT INTO v VALUES (-7, -7, -7, -7, -7, -7, -7, -7);
SELECT * FROM v;
--> 1|42|42|42|TRUE|0000-00-00|00:00:00|0000-00-00 00:00:00|42
--> 2|0|0|0|FALSE|0000-00-00|00:00:00|0000-00-00 00:00:00|0
--> 3|-7|-7|-7|TRUE|0000-07-00|00:00:00|0000-07-00 00:00:00|-7
--= _rowid|i|d|s|b|day|clock|stamp|x
--: Integer|Integer|Double|String|Boolean|Date|Time|Timestamp|Binary
DELETE FROM v;

-- Doubles.
INSERT INTO v VALUES (2.5, 2.5, 2.5, 2.5, 2.5, 2.5, 2.5, 2.5);
INSERT INTO v VALUES (-2.5, -2.5, -2.5, -2.5, 'x', 'x', 'x', -2.5);
INSERT INTO v VALUES (0.5, 0.5, 0.5, 0.5, 'x', 'x', 'x', 0.5);
INSERT INTO v VALUES (0.0, 0.0, 0.0, 0.0, 'x', 'x', 'x', 0.0);
INSERT INTO v VALUES (3000000000, 3000000000, 3000000000, 3000000000, 'x', 'x', 'x', 3000000000);
INSERT INTO v VALUES (-3000000000, 1.0e300, 1.0e-9, -0.0, 'x', 'x', 'x', 1.5e3);
INSERT INTO v VALUES (0.0/0, 0.0/0, 1.0/0, 0.0/0, 'x', 'x', 'x', -1.0/0);
SELECT i, d, s, b, x FROM v;
--> 2|2.5|2.5|TRUE|2.5
--> -2|-2.5|-2.5|TRUE|-2.5
--> 0|0.5|0.5|TRUE|0.5
--> 0|0|0|FALSE|0
--> 2147483647|3000000000|3000000000|TRUE|3000000000
--> -2147483648|1.0e+300|1.0e-9|FALSE|1500
--> 0|nan|inf|TRUE|-inf
DELETE FROM v;

-- Booleans.
INSERT INTO v VALUES (TRUE, TRUE, TRUE, TRUE, TRUE, TRUE, TRUE, TRUE);
INSERT INTO v VALUES (FALSE, FALSE, FALSE, FALSE, FALSE, FALSE, FALSE, FALSE);
SELECT i, d, s, b, day, clock, stamp, x FROM v;
--> 1|1|TRUE|TRUE|0000-00-00|00:00:00|0000-00-00 00:00:00|TRUE
--> 0|0|FALSE|FALSE|0000-00-00|00:00:00|0000-00-00 00:00:00|FALSE
DELETE FROM v;

-- NULL becomes what its conversions give: the text NULL, which is no word for false.
INSERT INTO v VALUES (NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL);
SELECT i, d, s, b, day, clock, stamp, x FROM v;
--> 0|0|NULL|TRUE|0000-00-00|00:00:00|0000-00-00 00:00:00|NULL
SELECT COUNT(i), COUNT(d), COUNT(s), COUNT(b), COUNT(day), COUNT(x) FROM v;
--> 1|1|1|1|1|1
DELETE FROM v;

-- Dates and times: display forms as texts, no numbers.
INSERT INTO v VALUES (DATE '1984-05-06', DATE '1984-05-06', DATE '1984-05-06', DATE '1984-05-06',
    DATE '1984-05-06', DATE '1984-05-06', DATE '1984-05-06', DATE '1984-05-06');
INSERT INTO v VALUES (TIME '12:34:56', TIME '12:34:56', TIME '12:34:56', TIME '12:34:56',
    TIME '12:34:56', TIME '12:34:56', TIME '12:34:56', TIME '12:34:56');
INSERT INTO v VALUES (TIMESTAMP '1984-12-23 12:34:56', TIMESTAMP '1984-12-23 12:34:56',
    TIMESTAMP '1984-12-23 12:34:56', TIMESTAMP '1984-12-23 12:34:56',
    TIMESTAMP '1984-12-23 12:34:56', TIMESTAMP '1984-12-23 12:34:56',
    TIMESTAMP '1984-12-23 12:34:56', TIMESTAMP '1984-12-23 12:34:56');
SELECT i, d, s, b, day, clock, stamp, x FROM v;
--> 0|0|DATE 1984-05-06|TRUE|1984-05-06|00:00:00|1984-05-06 00:00:00|DATE 1984-05-06
--> 0|0|TIME 12:34:56|TRUE|0000-00-00|12:34:56|0000-00-00 12:34:56|TIME 12:34:56
--> 0|0|TIMESTAMP 1984-12-23 12:34:56|TRUE|1984-12-23|12:34:56|1984-12-23 12:34:56|TIMESTAMP 1984-12-23 12:34:56
DELETE FROM v;

-- Texts to numbers: leading blanks, a sign, digits; what follows is left out.
INSERT INTO v (i, d) VALUES ('12', '12');
INSERT INTO v (i, d) VALUES ('  12  ', '  12  ');
INSERT INTO v (i, d) VALUES ('-0042x', '-0042x');
INSERT INTO v (i, d) VALUES ('+7', '+7');
INSERT INTO v (i, d) VALUES ('- 7', '- 7');
INSERT INTO v (i, d) VALUES ('1e3', '1e3');
INSERT INTO v (i, d) VALUES ('2.9', '2.9');
INSERT INTO v (i, d) VALUES ('.5', '.5');
INSERT INTO v (i, d) VALUES ('1.5e-3x', '1.5e-3x');
INSERT INTO v (i, d) VALUES ('99999999999', '99999999999');
INSERT INTO v (i, d) VALUES ('-99999999999', '-99999999999');
INSERT INTO v (i, d) VALUES ('2147483647', '2147483648');
INSERT INTO v (i, d) VALUES ('2147483648', '1,5');
INSERT INTO v (i, d) VALUES ('-2147483648', '0x10');
INSERT INTO v (i, d) VALUES ('', '');
INSERT INTO v (i, d) VALUES ('abc', 'abc');
INSERT INTO v (i, d) VALUES ('inf', 'inf');
INSERT INTO v (i, d) VALUES ('nan', 'nan');
INSERT INTO v (i, d) VALUES ('1e', '1e');
SELECT i, d FROM v;
--> 12|12
--> 12|12
--> -42|-42
--> 7|7
--> 0|0
--> 1|1000
--> 2|2.9
--> 0|0.5
--> 1|0.0015
--> 2147483647|99999999999
--> -2147483648|-99999999999
--> 2147483647|2147483648
--> 2147483647|1
--> -2147483648|0
--> 0|0
--> 0|0
--> 0|0
--> 0|0
--> 1|1
DELETE FROM v;

-- Texts to Booleans: false, f and 0 in any case are false, and nothing else.
INSERT INTO v (s, b) VALUES ('false', 'false');
INSERT INTO v (s, b) VALUES ('FALSE', 'FaLsE');
INSERT INTO v (s, b) VALUES ('f', 'f');
INSERT INTO v (s, b) VALUES ('F', 'F');
INSERT INTO v (s, b) VALUES ('0', '0');
INSERT INTO v (s, b) VALUES ('no', 'no');
INSERT INTO v (s, b) VALUES ('true', 'true');
INSERT INTO v (s, b) VALUES ('0.0', '0.0');
INSERT INTO v (s, b) VALUES (' 0', ' 0');
INSERT INTO v (s, b) VALUES ('00', '00');
INSERT INTO v (s, b) VALUES ('', '');
INSERT INTO v (s, b) VALUES ('n', 'n');
INSERT INTO v (s, b) VALUES ('fa', 'fa');
INSERT INTO v (s, b) VALUES ('false ', 'false ');
INSERT INTO v (s, b) VALUES ('t', 't');
INSERT INTO v (s, b) VALUES ('1', '1');
INSERT INTO v (s, b) VALUES (0.1, 0.1);
INSERT INTO v (s, b) VALUES (1.0e-300, 1.0e-300);
INSERT INTO v (s, b) VALUES (-1.0, -1.0);
SELECT s, b FROM v;
--> false|FALSE
--> FALSE|FALSE
--> f|FALSE
--> F|FALSE
--> 0|FALSE
--> no|TRUE
--> true|TRUE
--> 0.0|TRUE
-->  0|TRUE
--> 00|TRUE
--> |TRUE
--> n|TRUE
--> fa|TRUE
--> false |TRUE
--> t|TRUE
--> 1|TRUE
--> 0.1|TRUE
--> 1.0e-300|TRUE
--> -1|TRUE
DELETE FROM v;

-- Texts to dates and times.
INSERT INTO v (day, clock, stamp) VALUES ('1984/05/06 12:34:6', '1984/05/06 12:34:6', '1984/05/06 12:34:6');
INSERT INTO v (day, clock, stamp) VALUES ('1984-5-6 8:4', '1984-5-6 8:4', '1984-5-6 8:4');
INSERT INTO v (day, clock, stamp) VALUES ('DATE 1984-5-06', 'TIME 1:2:3', 'TIMESTAMP 1984-12-23 12:34:56');
INSERT INTO v (day, clock, stamp) VALUES ('1984-12', '12:', '12:5');
INSERT INTO v (day, clock, stamp) VALUES ('1984/1/2', '123:45', ':7');
INSERT INTO v (day, clock, stamp) VALUES ('1984-12-123', '1:234', '5-6-7');
INSERT INTO v (day, clock, stamp) VALUES ('', '', '');
SELECT day, clock, stamp FROM v;
--> 1984-05-06|12:34:06|1984-05-06 12:34:06
--> 1984-05-06|08:04:00|1984-05-06 08:04:00
--> 1984-05-06|01:02:03|1984-12-23 12:34:56
--> 1984-12-00|12:00:00|0000-00-00 12:05:00
--> 1984-01-02|23:45:00|0000-00-00 00:07:00
--> 1984-12-12|01:23:00|0005-06-07 00:00:00
--> 0000-00-00|00:00:00|0000-00-00 00:00:00
