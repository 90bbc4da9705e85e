-- Integers: 32 bits that wrap, division toward zero.
SELECT 7/2, -7/2, 7/-2, -7/-2, 1/3, 6/3, 0/5;
--> 3|-3|-3|3|0|2|0
SELECT 8-4-2, 8/4/2, 2+3*4, (2+3)*4, 7-10, -(3-5), 10/4*2, 2--3;
--> 2|1|14|20|-3|2|4|5
SELECT 999999999*3, 46341*46341, 65536*65536, 65536*32768;
--> -1294967299|-2147479015|0|-2147483648
--: Integer|Integer|Integer|Integer
SELECT 0-999999999-999999999-147483650, (0-999999999-999999999-147483650)/-1, (0-999999999-999999999-147483650)-1;
--> -2147483648|-2147483648|2147483647
SELECT -(0-999999999-999999999-147483650), (0-999999999-999999999-147483650)*-1;
--> -2147483648|-2147483648

-- A Double on either side makes Doubles.
SELECT 7.0/2, 7/2.0, 10/4.0, 1.5+1, 1-0.5, 2*2.5, -1.5, 2147483647 + 1.0;
--> 3.5|3.5|2.5|2.5|0.5|5|-1.5|2147483648
--: Double|Double|Double|Double|Double|Double|Double|Double
SELECT 2147483648 - 1, 1.0/0, -1/0.0, 0.0/0.0, 1.0e300*1.0e300;
--> 2147483647|inf|-inf|nan|inf

-- Division of an Integer by zero can't be computed and leaves a NULL.
SELECT 1/0, 0/0, (1/0)+1, -(1/0);
--> NULL|NULL|NULL|0
-- What can't be computed on the right leaves what the left side left.
SELECT 5+(1/0), 'a'+(1/0), 2.5*(1/0);
--> 5|a|2.5

-- A text on the left takes + alone, and joins.
SELECT 'ab'+'cd', 'ab'+1, 'a'+1.5, 'a'+2.0, 'a'+TRUE, 'a'+NULL, ''+'';
--> abcd|ab1|a1.5|a2|aTRUE|aNULL|
--: String|String|String|String|String|String|String
SELECT 'on '+DATE '1994-07-09', 'at '+TIME '8:00', 'a'+1+2, 'a'+(1+2);
--> on DATE 1994-07-09|at TIME 08:00:00|a12|a3
SELECT 'ab'-'cd', 'ab'*2, 'ab'/2;
--> ab|ab|ab
--: None|None|None

-- On the right it counts by its number.
SELECT 1+'2', 1+'2.9', 1.5+'2.5', 1+'two', -'5', -'abc', 2*'3 times';
--> 3|3|4|1|-5|0|6
-- So do Booleans and dates, where one side is a number.
SELECT TRUE+1, 1+TRUE, FALSE+0.5, DATE '1994-07-09'+1, 1+DATE '1994-07-09', -TRUE;
--> 2|2|0.5|1|1|-1
-- Without one it can't be computed, and leaves the left side.
SELECT TRUE+TRUE, DATE '1994-07-09'-DATE '1994-07-08';
--> TRUE|1994-07-09

-- NULL counts as 0.
SELECT NULL+1, 1+NULL, NULL+1.5, 5*NULL, 5/NULL, NULL+NULL, -NULL;
--> 1|1|1.5|0|NULL|NULL|0

-- The values' own types, at the ends of their ranges.
SELECT 65537*65537, (65536*32768)*-1, 2147483647*2.0, 7-2.5, 2.5-7, 0.25+0.5, 1.5+'2.5 apples', 1+'x', 1-TRUE, 3*DATE '1994-07-09';
--# Integer 131073|Integer -2147483648|Double 4294967294|Double 4.5|Double -4.5|Double 0.75|Double 4|Integer 1|Integer 0|Integer 0
SELECT 1.0/0, -1/0.0, 0.0/0, 5/0, 0/0, NULL+'a', NULL+NULL, 2.5+NULL, '5'*2, 'ab'+FALSE;
--# Double inf|Double -inf|Double nan|NULL Integer|NULL Integer|NULL None|NULL None|Double 2.5|String 5|String abFALSE
