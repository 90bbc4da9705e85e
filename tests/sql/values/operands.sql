-- Every operator between every two types: the left side says what it comes to, and what can't be computed leaves the left side.
CREATE TABLE m (i integer, d double, s string, b boolean, day date, clock time, stamp timestamp);
INSERT INTO m VALUES (7, 2.5, '12ab', TRUE, '1994-07-09', '12:34:06', '1994-07-09 1:2');

-- Sums.
SELECT i+i, i+d, i+s, i+b, i+day, i+clock, i+stamp, i+NULL FROM m;
--# Integer 14|Double 9.5|Integer 19|Integer 8|Integer 7|Integer 7|Integer 7|Integer 7
--: Integer|Double|Integer|Integer|Integer|Integer|Integer|Integer
SELECT d+i, d+d, d+s, d+b, d+day, d+clock, d+stamp, d+NULL FROM m;
--# Double 9.5|Double 5|Double 14.5|Double 3.5|Double 2.5|Double 2.5|Double 2.5|Double 2.5
--: Double|Double|Double|Double|Double|Double|Double|Double
SELECT s+i, s+d, s+s, s+b, s+day, s+clock, s+stamp, s+NULL FROM m;
--# String 12ab7|String 12ab2.5|String 12ab12ab|String 12abTRUE|String 12abDATE 1994-07-09|String 12abTIME 12:34:06|String 12abTIMESTAMP 1994-07-09 01:02:00|String 12abNULL
--: String|String|String|String|String|String|String|String
SELECT b+i, b+d, b+s, b+b, b+day, b+clock, b+stamp, b+NULL FROM m;
--# Integer 8|Double 3.5|Boolean TRUE|Boolean TRUE|Boolean TRUE|Boolean TRUE|Boolean TRUE|Boolean TRUE
--: Integer|Double|None|None|None|None|None|None
SELECT day+i, day+d, day+s, day+b, day+day, day+clock, day+stamp, day+NULL FROM m;
--# Integer 7|Double 2.5|Date 1994-07-09|Date 1994-07-09|Date 1994-07-09|Date 1994-07-09|Date 1994-07-09|Date 1994-07-09
--: Integer|Double|None|None|None|None|None|None
SELECT clock+i, clock+d, clock+s, clock+b, clock+day, clock+clock, clock+stamp, clock+NULL FROM m;
--# Integer 7|Double 2.5|Time 12:34:06|Time 12:34:06|Time 12:34:06|Time 12:34:06|Time 12:34:06|Time 12:34:06
--: Integer|Double|None|None|None|None|None|None
SELECT stamp+i, stamp+d, stamp+s, stamp+b, stamp+day, stamp+clock, stamp+stamp, stamp+NULL FROM m;
--# Integer 7|Double 2.5|Timestamp 1994-07-09 01:02:00|Timestamp 1994-07-09 01:02:00|Timestamp 1994-07-09 01:02:00|Timestamp 1994-07-09 01:02:00|Timestamp 1994-07-09 01:02:00|Timestamp 1994-07-09 01:02:00
--: Integer|Double|None|None|None|None|None|None
SELECT NULL+i, NULL+d, NULL+s, NULL+b, NULL+day, NULL+clock, NULL+stamp, NULL+NULL FROM m;
--# Integer 7|Double 2.5|NULL None|NULL None|NULL None|NULL None|NULL None|NULL None
--: Integer|Double|None|None|None|None|None|None

-- Differences.
SELECT i-i, i-d, i-s, i-b, i-day, i-clock, i-stamp, i-NULL FROM m;
--# Integer 0|Double 4.5|Integer -5|Integer 6|Integer 7|Integer 7|Integer 7|Integer 7
--: Integer|Double|Integer|Integer|Integer|Integer|Integer|Integer
SELECT d-i, d-d, d-s, d-b, d-day, d-clock, d-stamp, d-NULL FROM m;
--# Double -4.5|Double 0|Double -9.5|Double 1.5|Double 2.5|Double 2.5|Double 2.5|Double 2.5
--: Double|Double|Double|Double|Double|Double|Double|Double
SELECT s-i, s-d, s-s, s-b, s-day, s-clock, s-stamp, s-NULL FROM m;
--# String 12ab|String 12ab|String 12ab|String 12ab|String 12ab|String 12ab|String 12ab|String 12ab
--: None|None|None|None|None|None|None|None
SELECT b-i, b-d, b-s, b-b, b-day, b-clock, b-stamp, b-NULL FROM m;
--# Integer -6|Double -1.5|Boolean TRUE|Boolean TRUE|Boolean TRUE|Boolean TRUE|Boolean TRUE|Boolean TRUE
--: Integer|Double|None|None|None|None|None|None
SELECT day-i, day-d, day-s, day-b, day-day, day-clock, day-stamp, day-NULL FROM m;
--# Integer -7|Double -2.5|Date 1994-07-09|Date 1994-07-09|Date 1994-07-09|Date 1994-07-09|Date 1994-07-09|Date 1994-07-09
--: Integer|Double|None|None|None|None|None|None
SELECT clock-i, clock-d, clock-s, clock-b, clock-day, clock-clock, clock-stamp, clock-NULL FROM m;
--# Integer -7|Double -2.5|Time 12:34:06|Time 12:34:06|Time 12:34:06|Time 12:34:06|Time 12:34:06|Time 12:34:06
--: Integer|Double|None|None|None|None|None|None
SELECT stamp-i, stamp-d, stamp-s, stamp-b, stamp-day, stamp-clock, stamp-stamp, stamp-NULL FROM m;
--# Integer -7|Double -2.5|Timestamp 1994-07-09 01:02:00|Timestamp 1994-07-09 01:02:00|Timestamp 1994-07-09 01:02:00|Timestamp 1994-07-09 01:02:00|Timestamp 1994-07-09 01:02:00|Timestamp 1994-07-09 01:02:00
--: Integer|Double|None|None|None|None|None|None
SELECT NULL-i, NULL-d, NULL-s, NULL-b, NULL-day, NULL-clock, NULL-stamp, NULL-NULL FROM m;
--# Integer -7|Double -2.5|NULL None|NULL None|NULL None|NULL None|NULL None|NULL None
--: Integer|Double|None|None|None|None|None|None

-- Products.
SELECT i*i, i*d, i*s, i*b, i*day, i*clock, i*stamp, i*NULL FROM m;
--# Integer 49|Double 17.5|Integer 84|Integer 7|Integer 0|Integer 0|Integer 0|Integer 0
--: Integer|Double|Integer|Integer|Integer|Integer|Integer|Integer
SELECT d*i, d*d, d*s, d*b, d*day, d*clock, d*stamp, d*NULL FROM m;
--# Double 17.5|Double 6.25|Double 30|Double 2.5|Double 0|Double 0|Double 0|Double 0
--: Double|Double|Double|Double|Double|Double|Double|Double
SELECT s*i, s*d, s*s, s*b, s*day, s*clock, s*stamp, s*NULL FROM m;
--# String 12ab|String 12ab|String 12ab|String 12ab|String 12ab|String 12ab|String 12ab|String 12ab
--: None|None|None|None|None|None|None|None
SELECT b*i, b*d, b*s, b*b, b*day, b*clock, b*stamp, b*NULL FROM m;
--# Integer 7|Double 2.5|Boolean TRUE|Boolean TRUE|Boolean TRUE|Boolean TRUE|Boolean TRUE|Boolean TRUE
--: Integer|Double|None|None|None|None|None|None
SELECT day*i, day*d, day*s, day*b, day*day, day*clock, day*stamp, day*NULL FROM m;
--# Integer 0|Double 0|Date 1994-07-09|Date 1994-07-09|Date 1994-07-09|Date 1994-07-09|Date 1994-07-09|Date 1994-07-09
--: Integer|Double|None|None|None|None|None|None
SELECT clock*i, clock*d, clock*s, clock*b, clock*day, clock*clock, clock*stamp, clock*NULL FROM m;
--# Integer 0|Double 0|Time 12:34:06|Time 12:34:06|Time 12:34:06|Time 12:34:06|Time 12:34:06|Time 12:34:06
--: Integer|Double|None|None|None|None|None|None
SELECT stamp*i, stamp*d, stamp*s, stamp*b, stamp*day, stamp*clock, stamp*stamp, stamp*NULL FROM m;
--# Integer 0|Double 0|Timestamp 1994-07-09 01:02:00|Timestamp 1994-07-09 01:02:00|Timestamp 1994-07-09 01:02:00|Timestamp 1994-07-09 01:02:00|Timestamp 1994-07-09 01:02:00|Timestamp 1994-07-09 01:02:00
--: Integer|Double|None|None|None|None|None|None
SELECT NULL*i, NULL*d, NULL*s, NULL*b, NULL*day, NULL*clock, NULL*stamp, NULL*NULL FROM m;
--# Integer 0|Double 0|NULL None|NULL None|NULL None|NULL None|NULL None|NULL None
--: Integer|Double|None|None|None|None|None|None

-- Quotients.
SELECT i/i, i/d, i/s, i/b, i/day, i/clock, i/stamp, i/NULL FROM m;
--# Integer 1|Double 2.8|Integer 0|Integer 7|NULL Integer|NULL Integer|NULL Integer|NULL Integer
--: Integer|Double|Integer|Integer|Integer|Integer|Integer|Integer
SELECT d/i, d/d, d/s, d/b, d/day, d/clock, d/stamp, d/NULL FROM m;
--# Double 0.35714285714285715|Double 1|Double 0.20833333333333334|Double 2.5|Double inf|Double inf|Double inf|Double inf
--: Double|Double|Double|Double|Double|Double|Double|Double
SELECT s/i, s/d, s/s, s/b, s/day, s/clock, s/stamp, s/NULL FROM m;
--# String 12ab|String 12ab|String 12ab|String 12ab|String 12ab|String 12ab|String 12ab|String 12ab
--: None|None|None|None|None|None|None|None
SELECT b/i, b/d, b/s, b/b, b/day, b/clock, b/stamp, b/NULL FROM m;
--# Integer 0|Double 0.4|Boolean TRUE|Boolean TRUE|Boolean TRUE|Boolean TRUE|Boolean TRUE|Boolean TRUE
--: Integer|Double|None|None|None|None|None|None
SELECT day/i, day/d, day/s, day/b, day/day, day/clock, day/stamp, day/NULL FROM m;
--# Integer 0|Double 0|Date 1994-07-09|Date 1994-07-09|Date 1994-07-09|Date 1994-07-09|Date 1994-07-09|Date 1994-07-09
--: Integer|Double|None|None|None|None|None|None
SELECT clock/i, clock/d, clock/s, clock/b, clock/day, clock/clock, clock/stamp, clock/NULL FROM m;
--# Integer 0|Double 0|Time 12:34:06|Time 12:34:06|Time 12:34:06|Time 12:34:06|Time 12:34:06|Time 12:34:06
--: Integer|Double|None|None|None|None|None|None
SELECT stamp/i, stamp/d, stamp/s, stamp/b, stamp/day, stamp/clock, stamp/stamp, stamp/NULL FROM m;
--# Integer 0|Double 0|Timestamp 1994-07-09 01:02:00|Timestamp 1994-07-09 01:02:00|Timestamp 1994-07-09 01:02:00|Timestamp 1994-07-09 01:02:00|Timestamp 1994-07-09 01:02:00|Timestamp 1994-07-09 01:02:00
--: Integer|Double|None|None|None|None|None|None
SELECT NULL/i, NULL/d, NULL/s, NULL/b, NULL/day, NULL/clock, NULL/stamp, NULL/NULL FROM m;
--# Integer 0|Double 0|NULL None|NULL None|NULL None|NULL None|NULL None|NULL None
--: Integer|Double|None|None|None|None|None|None
