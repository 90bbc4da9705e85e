-- How two values are compared: as Booleans when one is; by the left side's type otherwise.

-- Numbers.
SELECT 1 = 1.0, 2 > 1.5, 1.5 < 2, 2 <> 2.0, 3 >= 3, 3 <= 2, 2147483647 = 2147483647.0;
--> 1|1|1|0|1|0|1
SELECT 10 < 9, '10' < '9', 10 < '9', '10' < 9;
--> 0|1|0|1
-- An Integer and a text: the text counts by its leading digits. A Double lets the fraction count.
SELECT 5 = '5 apples', 5 = '5.9', 5.0 = '5.9', 5.9 = '5.9kg', 0 = 'apples', 5 <> '5';
--> 1|1|0|1|1|0
-- With the text on the left both are texts.
SELECT '5' = 5, '5 ' = 5, '05' = 5, '5.0' = 5, '5.0' = 5.0, '1.5' = 1.5, '1.50' = 1.5;
--> 1|0|0|0|0|1|0

-- Texts, byte by byte.
SELECT 'abc' = 'abc', 'abc' = 'ABC', 'B' < 'a', 'abc' < 'abcd', '' < 'a', 'a' < '', 'a ' = 'a';
--> 1|0|1|1|1|0|0
SELECT 'é' > 'z', 'Z' < 'é', 'a' <= 'a', 'a' >= 'b', 'a' <> 'b';
--> 1|1|1|0|1

-- Booleans: the other side is made one.
SELECT TRUE = 1, TRUE = 2, FALSE = 0, TRUE = 0, 1.5 = TRUE, 0.0 = FALSE, TRUE > FALSE, FALSE < TRUE;
--> 1|1|1|0|1|1|1|1
SELECT TRUE = 'yes', 'yes' = TRUE, 'f' = FALSE, 'no' = FALSE, FALSE = 'False', '0' = FALSE;
--> 1|1|1|0|1|1
SELECT TRUE = DATE '1994-07-09', DATE '1994-07-09' = FALSE;
--> 1|0

-- Dates and times compare as their texts; a text may have the word in front.
SELECT DATE '1994-7-9' = '1994-07-09', DATE '1994-7-9' = '1994-7-9', '1994-07-09' = DATE '1994-7-9';
--> 1|0|1
SELECT DATE '1994-7-9' = 'DATE 1994-07-09', 'date 1994-07-09' = DATE '1994-7-9', 'DATE x' = 'x';
--> 1|1|0
SELECT TIME '8:4' = 'TIME 08:04:00', TIMESTAMP '1994-7-9 8:4' = 'timestamp 1994-07-09 08:04:00';
--> 1|1
SELECT DATE '1994-07-09' < DATE '1994-07-10', DATE '1994-07-09' > DATE '0994-07-10', TIME '9:00' < TIME '10:00';
--> 1|1|1
SELECT DATE '1994-07-09' = TIMESTAMP '1994-07-09 00:00:00', DATE '1994-07-09' < TIMESTAMP '1994-07-09 00:00:00';
--> 0|1
-- A number on the left sees no number in a date.
SELECT 1994 = DATE '1994-07-09', 0 = DATE '1994-07-09', DATE '1994-07-09' = 1994;
--> 0|1|0

-- NULL takes part with 0, FALSE's opposite, or the text NULL: it is not unknown.
SELECT NULL = NULL, NULL = 0, 0 = NULL, NULL = 1, NULL <> 0, NULL < 1, 0.0 = NULL;
--> 1|1|1|0|0|1|1
SELECT '' = NULL, 'NULL' = NULL, NULL = '', NULL = 'NULL', NULL = TRUE, NULL = FALSE;
--> 0|1|1|1|1|0

-- Comparisons are Integers, so they can be added up.
SELECT (1 = 1) + (2 = 2) + (1 = 2), (1 = 1) = TRUE, (1 < 2) * 5;
--> 2|1|5

-- On both sides of the line.
SELECT -2147483648 < 2147483647.0, 2.5 > '2.25', 2 = '2.9', '2' > 10, '5' = 5.0, 0.5 = TRUE, TRUE = 5, 0.0 = -0.0, 'a' < 'ab';
--> 1|1|1|1|1|1|1|1|1
-- One word in front of a date's text is dropped from a String, with its blank, whichever of the three it is.
SELECT DATE '1994-7-9' = 'TIME 1994-07-09', DATE '1994-7-9' = 'Timestamp 1994-07-09', DATE '1994-7-9' = 'DATE  1994-07-09', DATE '1994-7-9' = 'DATE DATE 1994-07-09', DATE '1994-7-9' = 'DATE1994-07-09', DATE '1994-7-9' = 'DATE';
--> 1|1|0|0|0|0
SELECT 'TIMESTAMP 1994-07-09 12:34:06' = TIMESTAMP '1994-07-09 12:34:06', 'DATE 1994-07-09' = '1994-07-09', 'DATE 1994-07-09' = 'DATE 1994-07-09', 'DATE 5' = 5;
--> 1|0|1|0
