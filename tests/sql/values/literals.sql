-- What literals stand for, and what their columns are called and typed.

SELECT 42, 'a', 1.5, TRUE, false, NULL;
--> 42|a|1.5|TRUE|FALSE|NULL
--= 42|'a'|1.5|TRUE|false|NULL
--: Integer|String|Double|Boolean|Boolean|None

-- Ten characters or a full stop make a Double; everything else is an Integer of its leading digits.
SELECT 999999999, 1234567890, 000000001, 0000000001, 5., 5;
--> 999999999|1234567890|1|1|5|5
--: Integer|Double|Integer|Double|Double|Integer
SELECT 12abc, 1e5, 1e+5, 1e-5, 1E;
--> 12|1|1|1|1
--: Integer|Integer|Integer|Integer|Integer
SELECT 1.5e3, 1.5E3, 1.5e-3, 1.5e+3, 1.5E-3;
--> 1500|1500|0.0015|1500|-1.5
--= 1.5e3|1.5E3|1.5e-3|1.5e+3|(1.5E-3)
SELECT 1.2.3, 12x.5;
--> 1.2|12

-- Doubles print as shortly as they can: plain from 1e-5 on and below 1e15, else with an exponent.
SELECT 0.1, 0.1+0.2, 100.0, 2.50, 0.00001, 0.000012, 0.000001, 0.00000025;
--> 0.1|0.30000000000000004|100|2.5|0.00001|0.000012|1.0e-6|2.5e-7
SELECT 100000000000000, 999999999999999, 1000000000000000, 1.0e300, 1.25e300;
--> 100000000000000|999999999999999|1.0e+15|1.0e+300|1.25e+300
SELECT 0.0, -0.0, 1.0/3, 123456789.125;
--> 0|0|0.3333333333333333|123456789.125
SELECT 1.0/0, -1.0/0, 0.0/0;
--> inf|-inf|nan

-- Texts.
SELECT 'it''s', '', '''', N'national', 'a"b', 'semi;colon', '--no comment';
--> it's||'|national|a"b|semi;colon|--no comment
SELECT 'Grüße', 'Ελληνικά';
--> Grüße|Ελληνικά

-- Dates and times hold the canonical form of their text.
SELECT DATE '1994-7-9', DATE '1994/07/09', date '1994-07-09', DATE N'1994-1-1';
--> 1994-07-09|1994-07-09|1994-07-09|1994-01-01
--= DATE '1994-7-9'|DATE '1994/07/09'|date '1994-07-09'|DATE '1994-1-1'
--: Date|Date|Date|Date
SELECT TIME '8:4', TIME '08:04:06', TIME '1994-7-9 8:4:6', TIME 'noon';
--> 08:04:00|08:04:06|08:04:06|00:00:00
--: Time|Time|Time|Time
SELECT TIMESTAMP '1994-7-9 8:4', TIMESTAMP '1994-7-9', TIMESTAMP '8:4:6';
--> 1994-07-09 08:04:00|1994-07-09 00:00:00|0000-00-00 08:04:06
--: Timestamp|Timestamp|Timestamp
SELECT DATE '2020-13-45', TIME '99:99:99', DATE '94-7-9', DATE '1994-7', DATE 'no date', DATE '';
--> 2020-13-45|99:99:99|0094-07-09|1994-07-00|0000-00-00|0000-00-00
SELECT DATE 'DATE 1994-07-09', DATE '  the 5th of 1994-07-09 8:00';
--> 1994-07-09|1994-07-09

-- Columns are called what the item's canonical text says, unless it has a name.
SELECT 1+2, -3, (4), 'a'+'b', upper('x'), 5 AS five, 6 six, -7 AS "seven";
--! 07000 SQL Syntax Error
SELECT 1+2, -3, (4), 'a'+'b', upper('x'), 5 AS five, 6 six;
--> 3|-3|4|ab|X|5|6
--= (1+2)|-(3)|4|('a'+'b')|UPPER('x')|five|six

-- Literals and their own types.
SELECT 0, 999999999, 1234567890, 0000000001, 1.5, 1., 12abc, 12abc.d;
--# Integer 0|Integer 999999999|Double 1234567890|Double 1|Double 1.5|Double 1|Integer 12|Double 12
SELECT 1e5, 1.0e-5, 1e-1234567, true, FALSE, NULL, null;
--# Integer 1|Double 0.00001|Double 0|Boolean TRUE|Boolean FALSE|NULL None|NULL None
SELECT 'a''b', '', '1994-7-9', DATE '1994-7-9', date '1994/7/9 8:00', Time '8:4', TIMESTAMP '1994-7-9 8:4';
--# String a'b|String |String 1994-7-9|Date 1994-07-09|Date 1994-07-09|Time 08:04:00|Timestamp 1994-07-09 08:04:00
