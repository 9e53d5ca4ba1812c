CREATE TABLE T (Id COUNTER PRIMARY KEY, Texto TEXT(20), Entero LONG, Doble DOUBLE, Hoja DECIMAL(15,0), Dia DATE, Sino YESNO)
INSERT INTO T (Texto, Entero, Doble, Hoja, Dia, Sino) VALUES ('ñ "b" \ c', '12', '85,5', '123456000001', '15/03/2010', '-1')
INSERT INTO T (Texto, Doble, Dia, Sino) VALUES ('', 85, #7:30:00#, 0);
INSERT INTO T (Doble) VALUES (0.1)

SELECT * FROM T
select Texto & '/' & Doble as Junto, Doble*2, Id Is Null FROM T WHERE Id=1
SELECT Sino, Doble>1, Not Sino, Texto Like 'x%', IsNull(Dia), Sino And Doble>1 FROM T
UPDATE T SET Entero = 5 WHERE Id > 1
SELECT * FROM T WHERE Id > 100
SELECT Tecsto FROM T
INSERT INTO T (Id) VALUES (1)
DROP TABLE T
