-- Statements as the program runs them, one a line, in an order in which all of them succeed on the tables of
-- schema.sql (a database of the former version). A line that begins with two hyphens names the theme of what follows.
-- Statements with question marks take two sheet numbers.
-- upgrade: tables
SELECT * FROM ICASEX order by codigosexo
DROP TABLE ANIDVI
CREATE TABLE ANIDVI (CodigoDireccion VARCHAR(3) PRIMARY KEY, NombreDireccion VARCHAR(50))
INSERT INTO ANIDVI VALUES ('E', 'Este')
INSERT INTO ICASEX VALUES ('U', 'Desconocido o no anotado')
INSERT INTO ICASEX VALUES ('M', 'Macho')
INSERT INTO ICASEX VALUES ('F', 'Hembra')
ALTER TABLE ICASEX DROP CONSTRAINT ICASEXANIAHO
ALTER TABLE ANIAHO ALTER COLUMN CodigoSexo TEXT(1)
ALTER TABLE ANIAHO ADD CONSTRAINT ICASEXIANIAHO FOREIGN KEY (CodigoSexo) REFERENCES ICASEX
UPDATE ANIAHO SET CodigoSexo='U' WHERE CodigoSexo='0'
UPDATE ANIAHO SET CodigoSexo='M' WHERE CodigoSexo='1'
UPDATE ANIAHO SET CodigoSexo='F' WHERE CodigoSexo='2'
DELETE FROM ICASEX WHERE CodigoSexo='0' or CodigoSexo='1' or CodigoSexo='2'
ALTER TABLE ANIBRD DROP CONSTRAINT ANIBRDANIAHO
ALTER TABLE ANIAHO ADD COLUMN CodigoEspecie TEXT(5)
UPDATE ANIAHO inner join ANIBRD on ANIAHO.IdEspecie =ANIBRD.IdEspecie SET ANIAHO.CodigoEspecie=ANIBRD.CodigoEspecie
ALTER TABLE ANIAHO ADD CONSTRAINT ANIBRDANIAHO FOREIGN KEY (CodigoEspecie) REFERENCES ANIBRD (CodigoEspecie)
UPDATE ANIBRD SET Iberica=0 WHERE CodigoEspecie='12470' OR CodigoEspecie='12531' OR CodigoEspecie='12411' OR CodigoEspecie='20580' OR CodigoEspecie='16170' OR CodigoEspecie='10120' OR CodigoEspecie='10080' OR CodigoEspecie='10020' OR CodigoEspecie='08000' OR CodigoEspecie='02871' OR CodigoEspecie='02873' OR CodigoEspecie='02880' OR CodigoEspecie='06720' OR CodigoEspecie='06730' OR CodigoEspecie='15722' OR CodigoEspecie='15671' OR CodigoEspecie='18760' OR CodigoEspecie='18740' OR CodigoEspecie='18771' OR CodigoEspecie='18772' OR CodigoEspecie='18630' OR CodigoEspecie='20270' OR CodigoEspecie='16180' OR CodigoEspecie='20420' OR CodigoEspecie='20480' OR CodigoEspecie='20470' OR CodigoEspecie='03160' OR CodigoEspecie='03201' OR CodigoEspecie='03070' OR CodigoEspecie='13480' OR CodigoEspecie='13430' OR CodigoEspecie='20590' OR CodigoEspecie='00221' OR CodigoEspecie='12590' OR CodigoEspecie='15232' OR CodigoEspecie='15233' OR CodigoEspecie='15231' OR CodigoEspecie='05911' OR CodigoEspecie='05912' OR CodigoEspecie='05913' OR CodigoEspecie='05341' OR CodigoEspecie='20290' OR CodigoEspecie='20260' OR CodigoEspecie='11120' OR CodigoEspecie='11062' OR CodigoEspecie='11063' OR CodigoEspecie='11061' OR CodigoEspecie='10201' OR CodigoEspecie='10202' OR CodigoEspecie='10192' OR CodigoEspecie='10191' OR CodigoEspecie='10180' OR CodigoEspecie='10175' OR CodigoEspecie='10171' OR CodigoEspecie='10172' OR CodigoEspecie='10176' OR CodigoEspecie='10173' OR CodigoEspecie='13340' OR CodigoEspecie='11490' OR CodigoEspecie='11481' OR CodigoEspecie='11482' OR CodigoEspecie='11462' OR CodigoEspecie='20610' OR CodigoEspecie='00801' OR CodigoEspecie='00802' OR CodigoEspecie='01472' OR CodigoEspecie='11213' OR CodigoEspecie='11212' OR CodigoEspecie='13071' OR CodigoEspecie='13114' OR CodigoEspecie='13113' OR CodigoEspecie='13000' OR CodigoEspecie='12980' OR CodigoEspecie='12930' OR CodigoEspecie='13122' OR CodigoEspecie='13121' OR CodigoEspecie='15492' OR CodigoEspecie='20440' OR CodigoEspecie='20620' OR CodigoEspecie='20240' OR CodigoEspecie='16740' OR CodigoEspecie='11380' OR CodigoEspecie='11393' OR CodigoEspecie='06140' OR CodigoEspecie='06830' OR CodigoEspecie='11130' OR CodigoEspecie='15090' OR CodigoEspecie='05160' OR CodigoEspecie='11862' OR CodigoEspecie='11861' OR CodigoEspecie='07351' OR CodigoEspecie='07352' OR CodigoEspecie='16330'
ALTER TABLE ANICHO ADD COLUMN Anillador INT
ALTER TABLE ANICHO ADD COLUMN Grupo INT
SELECT IdCabecera, CodAnillador FROM ANICHO
UPDATE ANICHO set Grupo='900123' WHERE IdCabecera=2
UPDATE ANICHO set Anillador='123456' WHERE IdCabecera=1
-- store tables
CREATE TABLE MOVIMIENTOS (IdMov VARCHAR(1) PRIMARY KEY, Descripcion VARCHAR(25))
INSERT INTO MOVIMIENTOS VALUES ('A', 'Anillas recibidas')
INSERT INTO MOVIMIENTOS VALUES ('D', 'Devolución')
INSERT INTO MOVIMIENTOS VALUES ('T', 'Traspaso a otro grupo')
CREATE TABLE ALMACEN (NumMov INTEGER PRIMARY KEY, Modelo VARCHAR(2), Inscripcion VARCHAR(2), NumInicial VARCHAR(6), NumFinal VARCHAR(6), Cantidad INTEGER, Fecha DATE, TipoMovimiento VARCHAR(1))
ALTER TABLE ALMACEN ADD CONSTRAINT MOVIMIENTOSALMACEN FOREIGN KEY (TipoMovimiento) REFERENCES MOVIMIENTOS
CREATE TABLE TIPOANILLAS (Modelo VARCHAR(2), Inscripcion VARCHAR(2), Total INTEGER, PRIMARY KEY (Modelo, Inscripcion))
INSERT INTO TIPOANILLAS VALUES ('0', 'AA', 0)
-- views
CREATE VIEW Anillamientos_Dup AS SELECT ANIAHO.CodigoCentro, ANIAHO.Anilla, ANIAHO.NumeroAnilla, ANIAHO.TipoRegistro, Count(*) AS TotAnillas FROM ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera WHERE ANIAHO.TipoRegistro='A' GROUP BY ANIAHO.CodigoCentro, ANIAHO.Anilla, ANIAHO.NumeroAnilla, ANIAHO.TipoRegistro HAVING (((Count(*))>1));
CREATE VIEW Recuperaciones_Dup AS SELECT ANIAHO.CodigoCentro, ANIAHO.Anilla, ANIAHO.NumeroAnilla, ANIAHO.TipoRegistro, ANICHO.FechaCaptura, ANIAHO.HoraCaptura, Count(*) AS TotAnillas FROM ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera WHERE ANIAHO.TipoRegistro='R' GROUP BY ANIAHO.CodigoCentro, ANIAHO.Anilla, ANIAHO.NumeroAnilla, ANIAHO.TipoRegistro, ANICHO.FechaCaptura, ANIAHO.HoraCaptura HAVING (((Count(*))>1));
CREATE VIEW Datos_Duplicados AS SELECT DISTINCT ANIAHO.*, ANIBRD.NombreEspecie, ANICHO.NumHoja, ANICHO.FechaCaptura, ANICHO.FechaCaptura-#1/1/1900# AS DifFecha FROM ANICHO, ANIBRD, ANIAHO, Anillamientos_Dup WHERE ANIAHO.anilla = Anillamientos_Dup.anilla And ANIAHO.TipoRegistro = Anillamientos_Dup.TipoRegistro And ANIAHO.NumeroAnilla = Anillamientos_Dup.NumeroAnilla And ANIAHO.IdEspecie = ANIBRD.IdEspecie And ANIAHO.IdCabecera = ANICHO.IdCabecera UNION SELECT DISTINCT ANIAHO.*, ANIBRD.NombreEspecie, ANICHO.NumHoja, ANICHO.FechaCaptura, ANICHO.FechaCaptura-#1/1/1900# AS DifFecha FROM ANICHO, ANIBRD, ANIAHO, Recuperaciones_Dup WHERE ANIAHO.Anilla=Recuperaciones_Dup.Anilla AND ANIAHO.TipoRegistro = Recuperaciones_Dup.TipoRegistro AND ANIAHO.NumeroAnilla = Recuperaciones_Dup.NumeroAnilla AND ANICHO.FechaCaptura = Recuperaciones_Dup.FechaCaptura AND ANIAHO.IdEspecie = ANIBRD.IdEspecie And ANIAHO.IdCabecera = ANICHO.IdCabecera
CREATE VIEW Datos_Excel AS SELECT ANIMAT.CodigoGrupo, ANIMAT.NombreGrupo, ANIAHO.Anilla, ANIAHO.InfoAnilla, ANIAHO.AnillaSustituida, ANIBRD.NombreEspecie, ANIBRD.CodigoEspecie, ANICHO.FechaCaptura, ANIAHO.HoraCaptura, ANIAHO.CodigoEdad, ANIAHO.CodigoSexo, ANIAHO.CodigoEstatus AS CodigoModoStatus, ANILOC.NombreLocalidad, ANILOC.MUNICIPIO, ANILOC.CodigoLocalidad, ANILOC.CodigoPROVINCIA, ANICHO.Observaciones, ANICHO.CodigoHabitat, ANICHO.CodigoMetodo, ANICHO.NumRedes, ANICHO.LongitudRed, ANICHO.HoraDesde, ANICHO.HoraHasta, ANICHO.Campanna, ANICHO.CodigoEstacion, ANICHO.MannanaCodigoFuerza, ANICHO.MannanaCodigoDireccion, ANICHO.MannanaCodigoNubosidad, ANICHO.MannanaCodigoLluvia, ANICHO.TardeCodigoFuerza, ANICHO.TardeCodigoDireccion, ANICHO.TardeCodigoNubosidad, ANICHO.TardeCodigoLluvia, ANICHO.Dato1, ANICHO.Dato2, ANICHO.Dato3, ANICHO.Dato4, ANICHO.Dato5, ANICHO.Dato6, ANIAHO.Parentesco, ANIAHO.TipoRegistro, ANIAHO.CodigoCentro, ANIAHO.CodigoCondicion, ANIAHO.CodigoCircunstancia, ANIAHO.CodigoReclamo, ANIAHO.Ala, ANIAHO.F8, ANIAHO.Peso, ANIAHO.Tarso, ANIAHO.CodigoPlaca, ANIAHO.CodigoGrasa, ANIAHO.CodigoMusculo, ANIAHO.PrecisionFecha AS CodigoPrecision, ANIAHO.CodigoEstado, ANIAHO.TamañoNidada AS CodigoTamañoNidada, ANIAHO.CodigoMuda, ANIAHO.CodigoManipulacion AS Manipulacion, ANIAHO.CodigoTransporte AS Transporte, ANIAHO.IniAnillador FROM (ANIMAT RIGHT JOIN (ANICHO LEFT JOIN ANILOC ON ANICHO.CodLocalidad = ANILOC.CodigoLocalidad) ON ANIMAT.CodigoAnillador = ANICHO.CodAnillador) INNER JOIN (ANIBRD INNER JOIN ANIAHO ON ANIBRD.IdEspecie = ANIAHO.IdEspecie) ON ANICHO.IdCabecera = ANIAHO.IdCabecera
-- identifiers
UPDATE ANIMAT SET IdAnillador=IdAni WHERE CodigoAnillador=123456
UPDATE ANILOC SET IdLocalidad = IdLoc WHERE IdLocalidad = -1 
UPDATE ANIBRD SET IdEspecie = IdEsp WHERE IdEspecie = -1 
UPDATE ANICHO SET IdCabecera = IdCab 
-- identification
SELECT * FROM ANIMAT WHERE CodigoAnillador = 123456
UPDATE ANIMAT SET NombreAnillador='ANA PEÑA', CoordinadorGrupo=1, CodigoGrupo='900123', NombreGrupo='GRUPO URZ',  CodigoEntidad='910001', NombreEntidad='SOCIEDAD' WHERE CodigoAnillador=123456
INSERT INTO ANIMAT (IdAnillador,  CodigoAnillador, NombreAnillador, CoordinadorGrupo, CodigoGrupo, NombreGrupo, CodigoEntidad, NombreEntidad) VALUES (-1, '234567','LUIS NÚÑEZ',0, '900123','GRUPO URZ',  '910001','SOCIEDAD') 
UPDATE ANIMAT SET IdAnillador=IdAni WHERE CodigoAnillador=234567
-- record engine
INSERT INTO ANICHO (IdCabecera,NumHoja,CodAnillador,CodLocalidad,FechaCaptura,CodigoHabitat,CodigoMetodo,NumRedes,LongitudRed,HoraDesde,HoraHasta,Campanna,CodigoEstacion,MannanaCodigoFuerza,MannanaCodigoDireccion,MannanaCodigoNubosidad,MannanaCodigoLluvia,TardeCodigoFuerza,TardeCodigoDireccion,TardeCodigoNubosidad,TardeCodigoLluvia,Observaciones,Dato1,Dato2,Dato3,Dato4,Dato5,Dato6,Anillador,Grupo) VALUES ('-1','123456000002','123456','2800123','15/03/2010','H1','M1','4','120','7:30:00','12:00:00','Primavera 2010','','','','','','','','','','Niebla, poco viento','','','','','','','123456','900123')
UPDATE ANICHO SET NumHoja='123456000002',CodAnillador='123456',CodLocalidad='2800123',FechaCaptura='15/03/2010',CodigoHabitat='H1',CodigoMetodo='M1',NumRedes='4',LongitudRed='120',HoraDesde='7:30:00',HoraHasta='12:00:00',Campanna='Primavera 2010',CodigoEstacion='',MannanaCodigoFuerza='',MannanaCodigoDireccion='',MannanaCodigoNubosidad='',MannanaCodigoLluvia='',TardeCodigoFuerza='',TardeCodigoDireccion='',TardeCodigoNubosidad='',TardeCodigoLluvia='',Observaciones='Niebla, poco viento',Dato1='',Dato2='',Dato3='',Dato4='',Dato5='',Dato6='',Anillador='123456',Grupo='900123' WHERE IdCabecera=-1
SELECT IdCabecera,NumHoja,CodAnillador,CodLocalidad,FechaCaptura,CodigoHabitat,CodigoMetodo,NumRedes,LongitudRed,HoraDesde,HoraHasta,Campanna,CodigoEstacion,MannanaCodigoFuerza,MannanaCodigoDireccion,MannanaCodigoNubosidad,MannanaCodigoLluvia,TardeCodigoFuerza,TardeCodigoDireccion,TardeCodigoNubosidad,TardeCodigoLluvia,Observaciones,Dato1,Dato2,Dato3,Dato4,Dato5,Dato6,Anillador,Grupo FROM ANICHO WHERE IdCabecera=1
INSERT INTO ANIAHO (IdCabecera,NumRegistro,TipoRegistro,CodigoCentro,NumeroAnilla,InfoAnilla,AnillaSustituida,IdEspecie,CodigoEdad,TamañoNidada,CodigoSexo,CodigoManipulacion,CodigoTransporte,CodigoCircunstancia,CodigoCondicion,Ala,F8,Peso,Tarso,CodigoPlaca,CodigoGrasa,CodigoMusculo,HoraCaptura,PrecisionFecha,CodigoEstado,CodigoEstatus,CodigoMuda,CodigoReclamo,IniAnillador,Parentesco,Observaciones,Dato1,Dato2,Dato3,Anilla,Dato4,Dato5,Dato6,CodigoEspecie) VALUES ('1','3','A','ESI','AB1236','4','','101','4','','M','0','0','','','73,5','','18,2','','0','2','2','8:10:00','0','','T','0','N','AP','','','','','','AB..1236','','','','12770')
UPDATE ANIAHO SET TipoRegistro='A',CodigoCentro='ESI',NumeroAnilla='AB1236',InfoAnilla='4',AnillaSustituida='',IdEspecie='101',CodigoEdad='4',TamañoNidada='',CodigoSexo='M',CodigoManipulacion='0',CodigoTransporte='0',CodigoCircunstancia='',CodigoCondicion='',Ala='73,5',F8='',Peso='18,2',Tarso='',CodigoPlaca='0',CodigoGrasa='2',CodigoMusculo='2',HoraCaptura='8:10:00',PrecisionFecha='0',CodigoEstado='',CodigoEstatus='T',CodigoMuda='0',CodigoReclamo='N',IniAnillador='AP',Parentesco='',Observaciones='',Dato1='',Dato2='',Dato3='',Anilla='AB..1236',Dato4='',Dato5='',Dato6='',CodigoEspecie='12770' WHERE IdCabecera=1 AND NumRegistro=3
SELECT IdCabecera,NumRegistro,TipoRegistro,CodigoCentro,NumeroAnilla,InfoAnilla,AnillaSustituida,IdEspecie,CodigoEdad,TamañoNidada,CodigoSexo,CodigoManipulacion,CodigoTransporte,CodigoCircunstancia,CodigoCondicion,Ala,F8,Peso,Tarso,CodigoPlaca,CodigoGrasa,CodigoMusculo,HoraCaptura,PrecisionFecha,CodigoEstado,CodigoEstatus,CodigoMuda,CodigoReclamo,IniAnillador,Parentesco,Observaciones,Dato1,Dato2,Dato3,Anilla,Dato4,Dato5,Dato6,CodigoEspecie FROM ANIAHO WHERE IdCabecera=1 AND NumRegistro=3
DELETE FROM ANIAHO WHERE IdCabecera=1 AND NumRegistro=3
SELECT MAX(NumRegistro) as maximo from ANIAHO WHERE IdCabecera =1
UPDATE ANIAHO SET NumRegistro=3 WHERE IdCabecera =1 AND NumRegistro=4
-- screen binding
SELECT rtrim(NombreEspecie) as devolver FROM ANIBRD WHERE IdEspecie=101
SELECT (rtrim(Municipio) & '     ' & rtrim(NombreLocalidad)) as devolver FROM ANILOC WHERE CodigoLocalidad='2800123'
-- start-up and main window
SELECT * FROM Datos_Duplicados 
-- ring rules
SELECT Max(NumHoja) AS NumeroMayor FROM ANICHO WHERE CodAnillador = 123456
-- captures: combos
SELECT * FROM ICAFRO 
SELECT * FROM ICACIR
SELECT * FROM ICACON
SELECT * FROM ICAAGE
SELECT * FROM ICASEX
SELECT * FROM ANIRECLAMO
SELECT * FROM ICASTA ORDER BY CODIGOESTATUS
SELECT * FROM ICAMUDA
SELECT * FROM ANIMUS
SELECT * FROM ANIGRA
SELECT * FROM ANIPLACA
SELECT * FROM ANIESTADO
SELECT * FROM ICAINFORNG
SELECT * FROM ICAPRECISION
SELECT * FROM ICAMANIP
SELECT * FROM ICATRANS
SELECT * FROM ICATAM
SELECT rtrim(NombreEspecie)& ' .-. ' & CodigoEspecie as Especie ,IdEspecie FROM ANIBRD WHERE Iberica = 1 ORDER BY NombreEspecie
SELECT rtrim(NombreEspecie)& ' .-. ' & CodigoEspecie as Especie ,IdEspecie FROM ANIBRD ORDER BY NombreEspecie
SELECT Max(NumRegistro) AS NumeroMayor FROM ANIAHO WHERE IdCabecera=1
SELECT NombreLocalidad, Municipio, ANICHO.CodLocalidad FROM (ANICHO INNER JOIN ANILOC ON ANICHO.CodLocalidad = ANILOC.CodigoLocalidad) INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera WHERE (((ANIAHO.IdCabecera)=1))
-- captures: duplicates
SELECT * FROM ANIAHO WHERE CodigoCentro='ESI' AND Anilla='AB..1234'AND TipoRegistro='A'
SELECT ANIAHO.* FROM ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera WHERE ANIAHO.CodigoCentro='ESI'AND ANIAHO.Anilla='AB..1235' AND ANICHO.FechaCaptura=#3/15/2010#AND ANIAHO.HoraCaptura=#8:10:00# AND ANIAHO.TipoRegistro='R'
-- captures: lists
SELECT BRD.NombreEspecie, ANICHO.FechaCaptura, * ,  ANICHO.FechaCaptura-#1/1/1900# AS DifFecha FROM ANICHO INNER JOIN (ANIAHO INNER JOIN ANIBRD AS BRD ON ANIAHO.IdEspecie = BRD.IdEspecie) ON ANICHO.IdCabecera = ANIAHO.IdCabecera Where (((ANIAHO.IdCabecera) = 1)) ORDER BY ANIAHO.NumRegistro
SELECT BRD.NombreEspecie, ANICHO.FechaCaptura, *,  ANICHO.FechaCaptura-#1/1/1900# AS DifFecha FROM ANICHO INNER JOIN (ANIAHO INNER JOIN ANIBRD AS BRD ON ANIAHO.IdEspecie = BRD.IdEspecie) ON ANICHO.IdCabecera = ANIAHO.IdCabecera
SELECT BRD.NombreEspecie, ANICHO.FechaCaptura, *,  ANICHO.FechaCaptura-#1/1/1900# AS DifFecha FROM ANICHO INNER JOIN (ANIAHO INNER JOIN ANIBRD AS BRD ON ANIAHO.IdEspecie = BRD.IdEspecie) ON ANICHO.IdCabecera = ANIAHO.IdCabecera WHERE ANICHO.CodAnillador=123456 OR ANICHO.Anillador=123456
SELECT BRD.NombreEspecie, ANICHO.FechaCaptura, *,  ANICHO.FechaCaptura-#1/1/1900# AS DifFecha FROM ANICHO INNER JOIN (ANIAHO INNER JOIN ANIBRD AS BRD ON ANIAHO.IdEspecie = BRD.IdEspecie) ON ANICHO.IdCabecera = ANIAHO.IdCabecera WHERE (ANICHO.CodAnillador=123456 OR ANICHO.Anillador=123456) AND (ANICHO.CodLocalidad='2800123') AND (YEAR(ANICHO.FechaCaptura)='2010')
SELECT BRD.NombreEspecie, ANICHO.FechaCaptura, *,  ANICHO.FechaCaptura-#1/1/1900# AS DifFecha FROM ANICHO INNER JOIN (ANIAHO INNER JOIN ANIBRD AS BRD ON ANIAHO.IdEspecie = BRD.IdEspecie) ON ANICHO.IdCabecera = ANIAHO.IdCabecera WHERE (ANICHO.CodAnillador=123456 OR ANICHO.Anillador=123456) AND (ANICHO.CodLocalidad='2800123') AND (YEAR(ANICHO.FechaCaptura)='2010') AND ANICHO.CodAnillador=123456 OR ANICHO.Anillador=123456
SELECT * FROM Datos_Duplicados 
SELECT * FROM ANICHO
SELECT ANILOC.NombreLocalidad, ANILOC.Municipio, ANICHO.FechaCaptura, ANICHO.CodLocalidad FROM (ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera) INNER JOIN ANILOC ON ANICHO.CodLocalidad = ANILOC.CodigoLocalidad WHERE (((ANICHO.NumHoja)=123456000001))
SELECT rtrim(NombreEspecie) & ' .-. ' & ANIAHO.CodigoEspecie as Especie, ANIBRD.CodigoEspecie as ID FROM ANIBRD INNER JOIN ANIAHO ON ANIBRD.IdEspecie = ANIAHO.IdEspecie WHERE IdCabecera = 1 AND NumRegistro = 1
-- sheets
SELECT * FROM ICAHAB
SELECT * FROM ANIMCA
SELECT * FROM ANIFVE
SELECT * FROM ANIDVI
SELECT * FROM ANINUB
SELECT * FROM ANILLU
select  rtrim(Municipio) & '   ' & rtrim(NombreLocalidad) & ' .-. ' & CodigoLocalidad   as Localidad, IdLocalidad  from aniloc order by Municipio, NombreLocalidad
SELECT *,FechaCaptura-#1/1/1900# AS DifFecha,LOC.NombreLocalidad, LOC.Municipio FROM ANICHO INNER JOIN ANILOC as LOC ON ANICHO.CodLocalidad=LOC.CodigoLocalidad  ORDER BY NumHoja
SELECT *,FechaCaptura-#1/1/1900# AS DifFecha,LOC.NombreLocalidad, LOC.Municipio FROM ANICHO INNER JOIN ANILOC as LOC ON ANICHO.CodLocalidad=LOC.CodigoLocalidad  WHERE ANICHO.CodAnillador=123456 OR ANICHO.Anillador=123456 ORDER BY NumHoja
SELECT IdCabecera FROM ANICHO WHERE NumHoja = 123456000001
SELECT ANICHO.CodAnillador, ANIMAT.CodigoAnillador, ANIMAT.NombreAnillador, ANIMAT.CodigoGrupo, ANIMAT.NombreGrupo, ANIMAT.CodigoEntidad, ANIMAT.NombreEntidad,  ANICHO.CodLocalidad, ANILOC.CodigoLocalidad, ANICHO.Anillador FROM ANIMAT INNER JOIN  (ANILOC INNER JOIN  ANICHO ON ANILOC.CodigoLocalidad = ANICHO.CodLocalidad) ON (ANIMAT.CodigoGrupo = ANICHO.CodAnillador OR ANIMAT.CodigoAnillador=ANICHO.CodAnillador) WHERE ANICHO.IdCabecera = 1
Select CodigoLocalidad, NombreLocalidad, NombreProvincia, Municipio FROM ANILOC, ICAPRO WHERE ANILOC.CodigoLocalidad = '2800123' AND ANILOC.CodigoProvincia = ICAPRO.CodigoProvincia
Select CodigoLocalidad, NombreProvincia FROM ANILOC, ICAPRO WHERE ANILOC.IdLocalidad = 1 AND ANILOC.CodigoProvincia = ICAPRO.CodigoProvincia
SELECT IdCab FROM ANICHO WHERE IdCabecera = -1
UPDATE ANICHO SET IdCabecera = IdCab WHERE IdCabecera = -1 
DELETE FROM ANIAHO WHERE IdCabecera=99
-- sheets: printing and deletion by range
SELECT ANICHO.NumHoja AS NumHoja,ANIMAT.NombreAnillador & ' (' &  ANICHO.FechaCaptura & ')' AS Clave FROM ANIMAT INNER JOIN ANICHO ON (ANIMAT.CodigoAnillador = ANICHO.CodAnillador) OR (ANICHO.CodAnillador=ANIMAT.CodigoGrupo)ORDER BY ANICHO.NumHoja 
SELECT ANICHO.NumHoja AS NumHoja,ANIMAT.NombreAnillador & ' (' &  ANICHO.FechaCaptura & ')' AS Clave FROM ANIMAT INNER JOIN ANICHO ON (ANIMAT.CodigoAnillador = ANICHO.CodAnillador) OR (ANICHO.CodAnillador=ANIMAT.CodigoGrupo) WHERE ANICHO.CodAnillador = 123456 OR ANICHO.Anillador=123456 ORDER BY ANICHO.NumHoja 
SELECT DISTINCT ANICHO.NumHoja AS NumHoja,'(' &  ANICHO.FechaCaptura & ')' AS Clave FROM ANIMAT INNER JOIN  ANICHO ON ANIMAT.CodigoAnillador = ANICHO.CodAnillador OR ANIMAT.CodigoGrupo=ANICHO.CodAnillador ORDER BY ANICHO.NumHoja 
SELECT Min(NumHoja) AS MinHoja FROM ANICHO 
SELECT Max(NumHoja) AS MaxHoja FROM ANICHO 
SELECT Min(NumHoja) AS MinHoja FROM ANICHO  WHERE ANICHO.CodAnillador = 123456 
SELECT Max(NumHoja) AS MaxHoja FROM ANICHO  WHERE ANICHO.CodAnillador = 123456 
DELETE FROM ANICHO WHERE NumHoja BETWEEN 999999000001 AND 999999000009
-- export: files
SELECT DISTINCT ANIMAT.* FROM  ANIMAT INNER JOIN  (ANILOC INNER JOIN  (ANIBRD INNER JOIN  (ANICHO INNER JOIN  ANIAHO ON  ANICHO.IdCabecera = ANIAHO.IdCabecera) ON  ANIBRD.IdEspecie = ANIAHO.IdEspecie) ON  ANILOC.CodigoLocalidad = ANICHO.CodLocalidad) ON  (ANICHO.CodAnillador = ANIMAT.CodigoGrupo) OR (ANIMAT.CodigoAnillador = ANICHO.CodAnillador) WHERE ANICHO.NumHoja BETWEEN 123456000001 AND 900123000009 
SELECT DISTINCT ANICHO.* FROM  ANIMAT INNER JOIN  (ANILOC INNER JOIN  (ANIBRD INNER JOIN  (ANICHO INNER JOIN  ANIAHO ON  ANICHO.IdCabecera = ANIAHO.IdCabecera) ON  ANIBRD.IdEspecie = ANIAHO.IdEspecie) ON  ANILOC.CodigoLocalidad = ANICHO.CodLocalidad) ON  (ANICHO.CodAnillador = ANIMAT.CodigoGrupo) OR (ANIMAT.CodigoAnillador = ANICHO.CodAnillador) WHERE ANICHO.NumHoja BETWEEN 123456000001 AND 900123000009 
SELECT DISTINCT ANIAHO.* FROM  ANIMAT INNER JOIN  (ANILOC INNER JOIN  (ANIBRD INNER JOIN  (ANICHO INNER JOIN  ANIAHO ON  ANICHO.IdCabecera = ANIAHO.IdCabecera) ON  ANIBRD.IdEspecie = ANIAHO.IdEspecie) ON  ANILOC.CodigoLocalidad = ANICHO.CodLocalidad) ON  (ANICHO.CodAnillador = ANIMAT.CodigoGrupo) OR (ANIMAT.CodigoAnillador = ANICHO.CodAnillador) WHERE ANICHO.NumHoja BETWEEN 123456000001 AND 900123000009 
SELECT DISTINCT ANICHO.* FROM  ANIMAT INNER JOIN  (ANILOC INNER JOIN  (ANIBRD INNER JOIN  (ANICHO INNER JOIN  ANIAHO ON  ANICHO.IdCabecera = ANIAHO.IdCabecera) ON  ANIBRD.IdEspecie = ANIAHO.IdEspecie) ON  ANILOC.CodigoLocalidad = ANICHO.CodLocalidad) ON  (ANICHO.CodAnillador = ANIMAT.CodigoGrupo) OR (ANIMAT.CodigoAnillador = ANICHO.CodAnillador) WHERE YEAR(ANICHO.FECHACAPTURA)='2010'
SELECT DISTINCT ANICHO.* FROM  ANIMAT INNER JOIN  (ANILOC INNER JOIN  (ANIBRD INNER JOIN  (ANICHO INNER JOIN  ANIAHO ON  ANICHO.IdCabecera = ANIAHO.IdCabecera) ON  ANIBRD.IdEspecie = ANIAHO.IdEspecie) ON  ANILOC.CodigoLocalidad = ANICHO.CodLocalidad) ON  (ANICHO.CodAnillador = ANIMAT.CodigoGrupo) OR (ANIMAT.CodigoAnillador = ANICHO.CodAnillador) WHERE YEAR(ANICHO.FECHACAPTURA)='2010'AND ANIMAT.CodigoAnillador= 123456
SELECT DISTINCT ANIAHO.* FROM  ANIMAT INNER JOIN  (ANILOC INNER JOIN  (ANIBRD INNER JOIN  (ANICHO INNER JOIN  ANIAHO ON  ANICHO.IdCabecera = ANIAHO.IdCabecera) ON  ANIBRD.IdEspecie = ANIAHO.IdEspecie) ON  ANILOC.CodigoLocalidad = ANICHO.CodLocalidad) ON  (ANICHO.CodAnillador = ANIMAT.CodigoGrupo) OR (ANIMAT.CodigoAnillador = ANICHO.CodAnillador) WHERE ANICHO.Campanna='Primavera'
SELECT DISTINCT ANIAHO.* FROM  ANIMAT INNER JOIN  (ANILOC INNER JOIN  (ANIBRD INNER JOIN  (ANICHO INNER JOIN  ANIAHO ON  ANICHO.IdCabecera = ANIAHO.IdCabecera) ON  ANIBRD.IdEspecie = ANIAHO.IdEspecie) ON  ANILOC.CodigoLocalidad = ANICHO.CodLocalidad) ON  (ANICHO.CodAnillador = ANIMAT.CodigoGrupo) OR (ANIMAT.CodigoAnillador = ANICHO.CodAnillador) WHERE ANICHO.Campanna='Primavera'AND ANIMAT.CodigoAnillador= 123456
SELECT DISTINCT ANICHO.* FROM  ANIMAT INNER JOIN  (ANILOC INNER JOIN  (ANIBRD INNER JOIN  (ANICHO INNER JOIN  ANIAHO ON  ANICHO.IdCabecera = ANIAHO.IdCabecera) ON  ANIBRD.IdEspecie = ANIAHO.IdEspecie) ON  ANILOC.CodigoLocalidad = ANICHO.CodLocalidad) ON  (ANICHO.CodAnillador = ANIMAT.CodigoGrupo) OR (ANIMAT.CodigoAnillador = ANICHO.CodAnillador) WHERE (ANICHO.FechaCaptura BETWEEN #03/01/2010# AND #03/31/2010#) 
SELECT DISTINCT ANICHO.* FROM  ANIMAT INNER JOIN  (ANILOC INNER JOIN  (ANIBRD INNER JOIN  (ANICHO INNER JOIN  ANIAHO ON  ANICHO.IdCabecera = ANIAHO.IdCabecera) ON  ANIBRD.IdEspecie = ANIAHO.IdEspecie) ON  ANILOC.CodigoLocalidad = ANICHO.CodLocalidad) ON  (ANICHO.CodAnillador = ANIMAT.CodigoGrupo) OR (ANIMAT.CodigoAnillador = ANICHO.CodAnillador) WHERE (ANICHO.FechaCaptura BETWEEN #03/01/2010# AND #03/31/2010#) AND ANIMAT.CodigoAnillador= 123456
SELECT DISTINCT ANILOC.* FROM  ANIMAT INNER JOIN  (ANILOC INNER JOIN  (ANIBRD INNER JOIN  (ANICHO INNER JOIN  ANIAHO ON  ANICHO.IdCabecera = ANIAHO.IdCabecera) ON  ANIBRD.IdEspecie = ANIAHO.IdEspecie) ON  ANILOC.CodigoLocalidad = ANICHO.CodLocalidad) ON  (ANICHO.CodAnillador = ANIMAT.CodigoGrupo) OR (ANIMAT.CodigoAnillador = ANICHO.CodAnillador) WHERE ANICHO.NumHoja BETWEEN 123456000001 AND 900123000009 AND ANIMAT.CodigoAnillador= 123456 AND ANILOC.OrigenDatos<>0 
SELECT DISTINCT ANIBRD.* FROM  ANIMAT INNER JOIN  (ANILOC INNER JOIN  (ANIBRD INNER JOIN  (ANICHO INNER JOIN  ANIAHO ON  ANICHO.IdCabecera = ANIAHO.IdCabecera) ON  ANIBRD.IdEspecie = ANIAHO.IdEspecie) ON  ANILOC.CodigoLocalidad = ANICHO.CodLocalidad) ON  (ANICHO.CodAnillador = ANIMAT.CodigoGrupo) OR (ANIMAT.CodigoAnillador = ANICHO.CodAnillador) WHERE ANICHO.NumHoja BETWEEN 123456000001 AND 900123000009 AND ANIMAT.CodigoAnillador= 123456 AND ANIBRD.OrigenDatos<>0 
-- export: screen
SELECT DISTINCT year(ANICHO.FECHACAPTURA) as Year FROM ANICHO
SELECT DISTINCT ANICHO.Campanna as Campaña FROM ANICHO
SELECT DISTINCT ANICHO.FECHACAPTURA as Fecha FROM ANICHO
SELECT ANICHO.NumHoja AS NumHoja,ANIMAT.NombreAnillador & ' (' &  ANICHO.FechaCaptura & ')' AS Clave FROM ANIMAT INNER JOIN ANICHO ON (ANICHO.CodAnillador = ANIMAT.CodigoGrupo) OR (ANICHO.CodAnillador = ANIMAT.CodigoAnillador)ORDER BY ANICHO.NumHoja 
SELECT ANICHO.NumHoja AS NumHoja,ANIMAT.NombreAnillador & ' (' &  ANICHO.FechaCaptura & ')' AS Clave FROM ANIMAT INNER JOIN ANICHO ON (ANICHO.CodAnillador = ANIMAT.CodigoGrupo) OR (ANICHO.CodAnillador = ANIMAT.CodigoAnillador) WHERE ANICHO.CodAnillador = 123456 OR ANICHO.Anillador=123456 ORDER BY ANICHO.NumHoja 
SELECT * FROM ANIMAT
SELECT Min(NumHoja) AS MinHoja FROM ANICHO 
SELECT Max(NumHoja) AS MaxHoja FROM ANICHO 
SELECT codlocalidad FROM ANICHO WHERE codlocalidad NOT IN (SELECT codigolocalidad FROM aniloc)
SELECT * FROM (ANIMAT INNER JOIN  ANICHO ON ANIMAT.CodigoAnillador = ANICHO.CodAnillador OR ANIMAT.CodigoGrupo=ANICHO.CodAnillador) INNER JOIN  ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera WHERE (ANICHO.NumHoja BETWEEN 123456000001 AND 900123000009) 
SELECT * FROM (ANIMAT INNER JOIN  ANICHO ON ANIMAT.CodigoAnillador = ANICHO.CodAnillador OR ANIMAT.CodigoGrupo=ANICHO.CodAnillador) INNER JOIN  ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera WHERE year(ANICHO.FechaCaptura)= 2010
SELECT * FROM (ANIMAT INNER JOIN  ANICHO ON ANIMAT.CodigoAnillador = ANICHO.CodAnillador OR ANIMAT.CodigoGrupo=ANICHO.CodAnillador) INNER JOIN  ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera WHERE ANICHO.Campanna= 'Primavera'
SELECT * FROM (ANIMAT INNER JOIN  ANICHO ON ANIMAT.CodigoAnillador = ANICHO.CodAnillador OR ANIMAT.CodigoGrupo=ANICHO.CodAnillador) INNER JOIN  ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera WHERE (ANICHO.FechaCaptura BETWEEN #03/01/2010# AND #03/31/2010#) 
SELECT MAX(NumEGrupo) as NumeroEnvio FROM  ANICHO 
UPDATE ANIMAT SET UltimoEnvio= 7
UPDATE ANICHO SET NumEGrupo=7
SELECT MAX(NumEAnillador) as NumeroEnvio FROM  ANICHO, ANIMAT WHERE ANICHO.CodAnillador = ANIMAT.CodigoAnillador  AND ANIMAT.CodigoAnillador= 123456
UPDATE ANIMAT, ANICHO SET ANIMAT.UltimoEnvio=  8 WHERE ANICHO.CodAnillador = ANIMAT.CodigoAnillador  AND ANIMAT.CodigoAnillador= 123456
UPDATE ANICHO, ANIMAT SET ANICHO.NumEAnillador= 8 WHERE ANICHO.CodAnillador = ANIMAT.CodigoAnillador  AND ANIMAT.CodigoAnillador= 123456
-- import
DELETE FROM ANIMAT WHERE CodigoAnillador=345678 
DELETE FROM ANILOC WHERE IdLocalidad=9999 
DELETE FROM ANIBRD WHERE IdEspecie=9999 
DELETE FROM ANICHO WHERE IdCabecera=77 
DELETE FROM ANIAHO WHERE IdCabecera=77  AND NumRegistro=1 
INSERT INTO ANIMAT (IdAnillador ,CodigoAnillador ,NombreAnillador ,CoordinadorGrupo ,CodigoGrupo ,NombreGrupo ,CodigoEntidad ,NombreEntidad ,UltimoEnvio ,Email ) VALUES ('5' ,'345678' ,'MARÍA GÓMEZ' ,'-1' ,'900555' ,'GRUPO Ñ' ,'' ,'' ,'3' ,'' ) 
INSERT INTO ANICHO (IdCabecera ,NumHoja ,CodAnillador ,CodLocalidad ,FechaCaptura ,CodigoHabitat ,CodigoMetodo ,NumRedes ,LongitudRed ,HoraDesde ,HoraHasta ,Campanna ,CodigoEstacion ,MannanaCodigoFuerza ,MannanaCodigoDireccion ,MannanaCodigoNubosidad ,MannanaCodigoLluvia ,TardeCodigoFuerza ,TardeCodigoDireccion ,TardeCodigoNubosidad ,TardeCodigoLluvia ,Observaciones ,Dato1 ,Dato2 ,Dato3 ,Dato4 ,Dato5 ,Dato6 ,Anillador ,Grupo ) VALUES ('77' ,'-1' ,'345678' ,'2800123' ,'16/03/2010' ,'H1' ,'M1' ,'' ,'' ,'7:30:00' ,'12:00:00' ,'' ,'' ,'' ,'' ,'' ,'' ,'' ,'' ,'' ,'' ,'' ,'' ,'' ,'' ,'' ,'' ,'' ,'0' ,'0' ) 
INSERT INTO ANIAHO (IdCabecera ,NumRegistro ,TipoRegistro ,CodigoCentro ,NumeroAnilla ,InfoAnilla ,AnillaSustituida ,IdEspecie ,CodigoEdad ,TamañoNidada ,CodigoSexo ,CodigoManipulacion ,CodigoTransporte ,CodigoCircunstancia ,CodigoCondicion ,Ala ,F8 ,Peso ,Tarso ,CodigoPlaca ,CodigoGrasa ,CodigoMusculo ,HoraCaptura ,PrecisionFecha ,CodigoEstado ,CodigoEstatus ,CodigoMuda ,CodigoReclamo ,IniAnillador ,Parentesco ,Observaciones ,Dato1 ,Dato2 ,Dato3 ,Anilla ,Dato4 ,Dato5 ,Dato6 ,CodigoEspecie) VALUES ('77' ,'3' ,'A' ,'ESI' ,'AB1236' ,'4' ,'' ,'101' ,'4' ,'' ,'M' ,'0' ,'0' ,'' ,'' ,'73,5' ,'' ,'18,2' ,'' ,'0' ,'2' ,'2' ,'8:10:00' ,'0' ,'' ,'T' ,'0' ,'N' ,'AP' ,'' ,'' ,'' ,'' ,'' ,'AB..1236' ,'' ,'' ,'' , '12770') 
SELECT CodigoEspecie FROM ANIBRD WHERE IdEspecie=101
SELECT DISTINCT CodAnillador FROM ANICHO WHERE NumHoja = -1 
SELECT DISTINCTROW ANICHO.IdCabecera, ANICHO.CodAnillador FROM ANIMAT, ANICHO WHERE ANICHO.NumHoja = -1 AND (ANIMAT.CodigoAnillador = 345678 OR ANIMAT.CODIGOGRUPO= 345678 OR ANIMAT.IdAnillador=345678) ORDER BY FechaCaptura 
UPDATE ANICHO SET NumHoja=345678000001 WHERE IdCabecera=77
-- catalogue
SELECT * FROM ANILOC WHERE CodigoLocalidad = '2800124'
SELECT * FROM ANIBRD WHERE CodigoEspecie = '00070'
INSERT INTO ANILOC (IdLocalidad, CodigoLocalidad, CodigoProvincia, NombreLocalidad, Municipio, CuadranteLatitud, CuadranteLongitud, GradosLatitud, MinutosLatitud, GradosLongitud, MinutosLongitud) VALUES (-1, '2800124','28','Laguna de San Juan','Chinchón','N','W','40','08','03','25')
INSERT INTO ANIBRD (IdEspecie, CodigoEspecie, NombreEspecie, NombreEspecie2, Iberica) VALUES (-1, '00070','Tachybaptus ruficollis','','1')
UPDATE ANILOC SET IdLocalidad = IdLoc WHERE IdLocalidad = -1 
UPDATE ANIBRD SET IdEspecie = IdEsp WHERE IdEspecie = -1 
-- query: lists
SELECT DISTINCTROW RTrim(NombreEspecie)+' .-. '+ANIBRD.CodigoEspecie AS Especie, ANIBRD.IdEspecie FROM ANIBRD INNER JOIN ANIAHO ON ANIBRD.IdEspecie = ANIAHO.IdEspecie ORDER BY ANIBRD.NombreEspecie
SELECT DISTINCT lTrim(l.NombreLocalidad & ', ' & l.Municipio) & ' .-. ' & l.CodigoLocalidad AS Localidad, l.IdLocalidad AS IdLocalidad, CodLocalidad FROM ANILOC AS l INNER JOIN anicho AS h ON l.CodigoLocalidad = h.CodLocalidad ORDER BY 1;
SELECT rtrim(NombreProvincia)+ ' .-. ' + CodigoProvincia as Provincia FROM ICAPRO  ORDER BY NombreProvincia
SELECT rtrim(NombrePais)+ ' .-. ' + CodigoPais as Pais FROM ICACNT  ORDER BY NombrePais
SELECT DISTINCT LTrim(aniloc.Municipio & ', ' & icapro.NombreProvincia) & ' .-. ' & aniloc.CodigoLocalidad AS Localidad FROM icapro INNER JOIN (anicho INNER JOIN ANILOC ON anicho.CodLocalidad = ANILOC.CodigoLocalidad) ON icapro.CodigoProvincia = ANILOC.CodigoProvincia ORDER BY 1;
SELECT DISTINCT CodigoAnillador, Trim(NombreAnillador) & ' (A)' AS NOMBRE, IdAnillador AS ID FROM ANIMAT ORDER BY CodigoAnillador
SELECT DISTINCT CodigoGrupo, Trim(NombreGrupo) & ' (G)' AS NOMBRE, CodigoGrupo AS ID FROM ANIMAT ORDER BY CodigoGrupo
SELECT CodigoCentro, Trim(NombreCentro) & ' (C)' AS NOMBRE FROM ICAFRO ORDER BY CodigoCentro
SELECT * FROM ICASTA
SELECT * FROM ICAMUDA
SELECT * FROM ICAHAB
SELECT * FROM ICAHAB 
SELECT * FROM ICASEX
SELECT * FROM ICAAGE
SELECT * FROM ICACIR
SELECT * FROM ICACON
SELECT * FROM ANIMCA
SELECT * FROM ANIRECLAMO
-- query: conditions
INSERT INTO Consultas SELECT DISTINCT ANICHO.NumHoja, ANICHO.CodigoHabitat, ANICHO.CodigoMetodo, ANILOC.CodigoLocalidad, ANILOC.NombreLocalidad & ', ' & ANILOC.Municipio & '. ' & ICAPRO.NombreProvincia AS NombreLocalidad, ANILOC.Municipio, ANICHO.FechaCaptura, ANICHO.NumRedes, ANICHO.LongitudRed, ANICHO.HoraDesde, ANICHO.HoraHasta, ANICHO.Campanna, ANICHO.CodigoEstacion, ANICHO.MannanaCodigoFuerza, ANICHO.MannanaCodigoDireccion, ANICHO.MannanaCodigoNubosidad, ANICHO.MannanaCodigoLluvia, ANICHO.TardeCodigoFuerza, ANICHO.TardeCodigoDireccion, ANICHO.TardeCodigoNubosidad, ANICHO.TardeCodigoLluvia, ANICHO.Observaciones AS ANICHO_Observaciones, ANICHO.Dato1 AS ANICHO_Dato1, ANICHO.Dato2 AS ANICHO_Dato2, ANICHO.Dato3 AS ANICHO_Dato3, ANICHO.Dato4 AS ANICHO_Dato4, ANICHO.Dato5 AS ANICHO_Dato5, ANICHO.Dato6 AS ANICHO_Dato6, ANICHO.Estado, ANIAHO.NumRegistro, ANIAHO.TipoRegistro, ANIAHO.CodigoCentro, ANIAHO.NumeroAnilla, ANIAHO.IdEspecie, ANIBRD.CodigoEspecie, ANIBRD.NombreEspecie, ANIAHO.Parentesco, ANIAHO.CodigoCondicion, ANIAHO.CodigoCircunstancia, ANIAHO.CodigoEdad, ANIAHO.CodigoSexo, ANIAHO.CodigoReclamo, ANIAHO.Ala, ANIAHO.F8, ANIAHO.Peso, ANIAHO.Tarso, ANIAHO.CodigoPlaca, ANIAHO.CodigoGrasa, ANIAHO.CodigoMusculo, ANIAHO.PrecisionFecha as CodigoPrecision, ANIAHO.CodigoEstado , ANIAHO.CodigoEstatus, ANIAHO.CodigoMuda, ANIAHO.IniAnillador,ANIAHO.Observaciones AS ANIAHO_Observaciones, ANIAHO.Dato1 AS ANIAHO_Dato1, ANIAHO.Dato2 AS ANIAHO_Dato2, ANIAHO.Dato3 AS ANIAHO_Dato3, ANIAHO.Dato4 AS ANIAHO_Dato4, ANIAHO.Dato5 AS ANIAHO_Dato5, ANIAHO.Dato6 AS ANIAHO_Dato6 FROM ICAPRO INNER JOIN (ANIBRD INNER JOIN (ANIMAT INNER JOIN (ANILOC INNER JOIN (ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera)  ON ANILOC.CodigoLocalidad = ANICHO.CodLocalidad)  ON (ANIMAT.CodigoAnillador = ANICHO.CodAnillador OR ANIMAT.CodigoGrupo = ANICHO.CodAnillador))  ON ANIBRD.IdEspecie = ANIAHO.IdEspecie)  ON ICAPRO.CodigoProvincia = ANILOC.CodigoProvincia   WHERE  ANIAHO.IdEspecie IN (101,205)  AND  ANICHO.FechaCaptura BETWEEN CDate('01/01/2010') AND CDate('31/12/2010')  AND  ANILOC.CodigoProvincia = '28' 
INSERT INTO Consultas SELECT DISTINCT ANICHO.NumHoja, ANICHO.CodigoHabitat, ANICHO.CodigoMetodo, ANILOC.CodigoLocalidad, ANILOC.NombreLocalidad & ', ' & ANILOC.Municipio & '. ' & ICAPRO.NombreProvincia AS NombreLocalidad, ANILOC.Municipio, ANICHO.FechaCaptura, ANICHO.NumRedes, ANICHO.LongitudRed, ANICHO.HoraDesde, ANICHO.HoraHasta, ANICHO.Campanna, ANICHO.CodigoEstacion, ANICHO.MannanaCodigoFuerza, ANICHO.MannanaCodigoDireccion, ANICHO.MannanaCodigoNubosidad, ANICHO.MannanaCodigoLluvia, ANICHO.TardeCodigoFuerza, ANICHO.TardeCodigoDireccion, ANICHO.TardeCodigoNubosidad, ANICHO.TardeCodigoLluvia, ANICHO.Observaciones AS ANICHO_Observaciones, ANICHO.Dato1 AS ANICHO_Dato1, ANICHO.Dato2 AS ANICHO_Dato2, ANICHO.Dato3 AS ANICHO_Dato3, ANICHO.Dato4 AS ANICHO_Dato4, ANICHO.Dato5 AS ANICHO_Dato5, ANICHO.Dato6 AS ANICHO_Dato6, ANICHO.Estado, ANIAHO.NumRegistro, ANIAHO.TipoRegistro, ANIAHO.CodigoCentro, ANIAHO.NumeroAnilla, ANIAHO.IdEspecie, ANIBRD.CodigoEspecie, ANIBRD.NombreEspecie, ANIAHO.Parentesco, ANIAHO.CodigoCondicion, ANIAHO.CodigoCircunstancia, ANIAHO.CodigoEdad, ANIAHO.CodigoSexo, ANIAHO.CodigoReclamo, ANIAHO.Ala, ANIAHO.F8, ANIAHO.Peso, ANIAHO.Tarso, ANIAHO.CodigoPlaca, ANIAHO.CodigoGrasa, ANIAHO.CodigoMusculo, ANIAHO.PrecisionFecha as CodigoPrecision, ANIAHO.CodigoEstado , ANIAHO.CodigoEstatus, ANIAHO.CodigoMuda, ANIAHO.IniAnillador,ANIAHO.Observaciones AS ANIAHO_Observaciones, ANIAHO.Dato1 AS ANIAHO_Dato1, ANIAHO.Dato2 AS ANIAHO_Dato2, ANIAHO.Dato3 AS ANIAHO_Dato3, ANIAHO.Dato4 AS ANIAHO_Dato4, ANIAHO.Dato5 AS ANIAHO_Dato5, ANIAHO.Dato6 AS ANIAHO_Dato6 FROM ICAPRO INNER JOIN (ANIBRD INNER JOIN (ANIMAT INNER JOIN (ANILOC INNER JOIN (ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera)  ON ANILOC.CodigoLocalidad = ANICHO.CodLocalidad)  ON (ANIMAT.CodigoAnillador = ANICHO.CodAnillador OR ANIMAT.CodigoGrupo = ANICHO.CodAnillador))  ON ANIBRD.IdEspecie = ANIAHO.IdEspecie)  ON ICAPRO.CodigoProvincia = ANILOC.CodigoProvincia   WHERE  ANICHO.CodLocalidad = '2800123'  AND  (ANICHO.CodAnillador = 123456 OR ANICHO.Anillador= 123456)  AND ANIAHO.CodigoCentro = 'ESI'  AND  ANIAHO.NumeroAnilla = 'AB1234' 
INSERT INTO Consultas SELECT DISTINCT ANICHO.NumHoja, ANICHO.CodigoHabitat, ANICHO.CodigoMetodo, ANILOC.CodigoLocalidad, ANILOC.NombreLocalidad & ', ' & ANILOC.Municipio & '. ' & ICAPRO.NombreProvincia AS NombreLocalidad, ANILOC.Municipio, ANICHO.FechaCaptura, ANICHO.NumRedes, ANICHO.LongitudRed, ANICHO.HoraDesde, ANICHO.HoraHasta, ANICHO.Campanna, ANICHO.CodigoEstacion, ANICHO.MannanaCodigoFuerza, ANICHO.MannanaCodigoDireccion, ANICHO.MannanaCodigoNubosidad, ANICHO.MannanaCodigoLluvia, ANICHO.TardeCodigoFuerza, ANICHO.TardeCodigoDireccion, ANICHO.TardeCodigoNubosidad, ANICHO.TardeCodigoLluvia, ANICHO.Observaciones AS ANICHO_Observaciones, ANICHO.Dato1 AS ANICHO_Dato1, ANICHO.Dato2 AS ANICHO_Dato2, ANICHO.Dato3 AS ANICHO_Dato3, ANICHO.Dato4 AS ANICHO_Dato4, ANICHO.Dato5 AS ANICHO_Dato5, ANICHO.Dato6 AS ANICHO_Dato6, ANICHO.Estado, ANIAHO.NumRegistro, ANIAHO.TipoRegistro, ANIAHO.CodigoCentro, ANIAHO.NumeroAnilla, ANIAHO.IdEspecie, ANIBRD.CodigoEspecie, ANIBRD.NombreEspecie, ANIAHO.Parentesco, ANIAHO.CodigoCondicion, ANIAHO.CodigoCircunstancia, ANIAHO.CodigoEdad, ANIAHO.CodigoSexo, ANIAHO.CodigoReclamo, ANIAHO.Ala, ANIAHO.F8, ANIAHO.Peso, ANIAHO.Tarso, ANIAHO.CodigoPlaca, ANIAHO.CodigoGrasa, ANIAHO.CodigoMusculo, ANIAHO.PrecisionFecha as CodigoPrecision, ANIAHO.CodigoEstado , ANIAHO.CodigoEstatus, ANIAHO.CodigoMuda, ANIAHO.IniAnillador,ANIAHO.Observaciones AS ANIAHO_Observaciones, ANIAHO.Dato1 AS ANIAHO_Dato1, ANIAHO.Dato2 AS ANIAHO_Dato2, ANIAHO.Dato3 AS ANIAHO_Dato3, ANIAHO.Dato4 AS ANIAHO_Dato4, ANIAHO.Dato5 AS ANIAHO_Dato5, ANIAHO.Dato6 AS ANIAHO_Dato6 FROM ICAPRO INNER JOIN (ANIBRD INNER JOIN (ANIMAT INNER JOIN (ANILOC INNER JOIN (ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera)  ON ANILOC.CodigoLocalidad = ANICHO.CodLocalidad)  ON (ANIMAT.CodigoAnillador = ANICHO.CodAnillador OR ANIMAT.CodigoGrupo = ANICHO.CodAnillador))  ON ANIBRD.IdEspecie = ANIAHO.IdEspecie)  ON ICAPRO.CodigoProvincia = ANILOC.CodigoProvincia   WHERE  ANILOC.Municipio = 'Ávila'  AND  (ANIMAT.CodigoGrupo = 900123  OR ANICHO.Grupo= 900123) 
INSERT INTO Consultas SELECT DISTINCT ANICHO.NumHoja, ANICHO.CodigoHabitat, ANICHO.CodigoMetodo, ANILOC.CodigoLocalidad, ANILOC.NombreLocalidad & ', ' & ANILOC.Municipio & '. ' & ICAPRO.NombreProvincia AS NombreLocalidad, ANILOC.Municipio, ANICHO.FechaCaptura, ANICHO.NumRedes, ANICHO.LongitudRed, ANICHO.HoraDesde, ANICHO.HoraHasta, ANICHO.Campanna, ANICHO.CodigoEstacion, ANICHO.MannanaCodigoFuerza, ANICHO.MannanaCodigoDireccion, ANICHO.MannanaCodigoNubosidad, ANICHO.MannanaCodigoLluvia, ANICHO.TardeCodigoFuerza, ANICHO.TardeCodigoDireccion, ANICHO.TardeCodigoNubosidad, ANICHO.TardeCodigoLluvia, ANICHO.Observaciones AS ANICHO_Observaciones, ANICHO.Dato1 AS ANICHO_Dato1, ANICHO.Dato2 AS ANICHO_Dato2, ANICHO.Dato3 AS ANICHO_Dato3, ANICHO.Dato4 AS ANICHO_Dato4, ANICHO.Dato5 AS ANICHO_Dato5, ANICHO.Dato6 AS ANICHO_Dato6, ANICHO.Estado, ANIAHO.NumRegistro, ANIAHO.TipoRegistro, ANIAHO.CodigoCentro, ANIAHO.NumeroAnilla, ANIAHO.IdEspecie, ANIBRD.CodigoEspecie, ANIBRD.NombreEspecie, ANIAHO.Parentesco, ANIAHO.CodigoCondicion, ANIAHO.CodigoCircunstancia, ANIAHO.CodigoEdad, ANIAHO.CodigoSexo, ANIAHO.CodigoReclamo, ANIAHO.Ala, ANIAHO.F8, ANIAHO.Peso, ANIAHO.Tarso, ANIAHO.CodigoPlaca, ANIAHO.CodigoGrasa, ANIAHO.CodigoMusculo, ANIAHO.PrecisionFecha as CodigoPrecision, ANIAHO.CodigoEstado , ANIAHO.CodigoEstatus, ANIAHO.CodigoMuda, ANIAHO.IniAnillador,ANIAHO.Observaciones AS ANIAHO_Observaciones, ANIAHO.Dato1 AS ANIAHO_Dato1, ANIAHO.Dato2 AS ANIAHO_Dato2, ANIAHO.Dato3 AS ANIAHO_Dato3, ANIAHO.Dato4 AS ANIAHO_Dato4, ANIAHO.Dato5 AS ANIAHO_Dato5, ANIAHO.Dato6 AS ANIAHO_Dato6 FROM ICAPRO INNER JOIN (ANIBRD INNER JOIN (ANIMAT INNER JOIN (ANILOC INNER JOIN (ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera)  ON ANILOC.CodigoLocalidad = ANICHO.CodLocalidad)  ON (ANIMAT.CodigoAnillador = ANICHO.CodAnillador OR ANIMAT.CodigoGrupo = ANICHO.CodAnillador))  ON ANIBRD.IdEspecie = ANIAHO.IdEspecie)  ON ICAPRO.CodigoProvincia = ANILOC.CodigoProvincia   WHERE  ICAPRO.CodigoComunidad = 13 
INSERT INTO Consultas SELECT DISTINCT ANICHO.NumHoja, ANICHO.CodigoHabitat, ANICHO.CodigoMetodo, ANILOC.CodigoLocalidad, ANILOC.NombreLocalidad & ', ' & ANILOC.Municipio & '. ' & ICAPRO.NombreProvincia AS NombreLocalidad, ANILOC.Municipio, ANICHO.FechaCaptura, ANICHO.NumRedes, ANICHO.LongitudRed, ANICHO.HoraDesde, ANICHO.HoraHasta, ANICHO.Campanna, ANICHO.CodigoEstacion, ANICHO.MannanaCodigoFuerza, ANICHO.MannanaCodigoDireccion, ANICHO.MannanaCodigoNubosidad, ANICHO.MannanaCodigoLluvia, ANICHO.TardeCodigoFuerza, ANICHO.TardeCodigoDireccion, ANICHO.TardeCodigoNubosidad, ANICHO.TardeCodigoLluvia, ANICHO.Observaciones AS ANICHO_Observaciones, ANICHO.Dato1 AS ANICHO_Dato1, ANICHO.Dato2 AS ANICHO_Dato2, ANICHO.Dato3 AS ANICHO_Dato3, ANICHO.Dato4 AS ANICHO_Dato4, ANICHO.Dato5 AS ANICHO_Dato5, ANICHO.Dato6 AS ANICHO_Dato6, ANICHO.Estado, ANIAHO.NumRegistro, ANIAHO.TipoRegistro, ANIAHO.CodigoCentro, ANIAHO.NumeroAnilla, ANIAHO.IdEspecie, ANIBRD.CodigoEspecie, ANIBRD.NombreEspecie, ANIAHO.Parentesco, ANIAHO.CodigoCondicion, ANIAHO.CodigoCircunstancia, ANIAHO.CodigoEdad, ANIAHO.CodigoSexo, ANIAHO.CodigoReclamo, ANIAHO.Ala, ANIAHO.F8, ANIAHO.Peso, ANIAHO.Tarso, ANIAHO.CodigoPlaca, ANIAHO.CodigoGrasa, ANIAHO.CodigoMusculo, ANIAHO.PrecisionFecha as CodigoPrecision, ANIAHO.CodigoEstado , ANIAHO.CodigoEstatus, ANIAHO.CodigoMuda, ANIAHO.IniAnillador,ANIAHO.Observaciones AS ANIAHO_Observaciones, ANIAHO.Dato1 AS ANIAHO_Dato1, ANIAHO.Dato2 AS ANIAHO_Dato2, ANIAHO.Dato3 AS ANIAHO_Dato3, ANIAHO.Dato4 AS ANIAHO_Dato4, ANIAHO.Dato5 AS ANIAHO_Dato5, ANIAHO.Dato6 AS ANIAHO_Dato6 FROM ICAPRO INNER JOIN (ANIBRD INNER JOIN (ANIMAT INNER JOIN (ANILOC INNER JOIN (ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera)  ON ANILOC.CodigoLocalidad = ANICHO.CodLocalidad)  ON (ANIMAT.CodigoAnillador = ANICHO.CodAnillador OR ANIMAT.CodigoGrupo = ANICHO.CodAnillador))  ON ANIBRD.IdEspecie = ANIAHO.IdEspecie)  ON ICAPRO.CodigoProvincia = ANILOC.CodigoProvincia   WHERE  ICAPRO.CodigoPais = 'ESP'  AND  ANIAHO.TipoRegistro = 'A'  AND  ANIAHO.CodigoEstatus = 'T'  AND  ANIAHO.CodigoMuda = 0 AND  ANICHO.CodigoHabitat = 'H1'  AND  ANIAHO.CodigoSexo = 'M' AND  ANIAHO.CodigoEdad = '4'  AND  ANIAHO.CodigoCircunstancia = '20'  AND  ANIAHO.CodigoCondicion = '8'  AND  ANICHO.CodigoMetodo = 'M1'  AND  ANIAHO.CodigoReclamo = 'N' 
-- query: run and balance
DELETE FROM Consultas
INSERT INTO Consultas SELECT DISTINCT ANICHO.NumHoja, ANICHO.CodigoHabitat, ANICHO.CodigoMetodo, ANILOC.CodigoLocalidad, ANILOC.NombreLocalidad & ', ' & ANILOC.Municipio & '. ' & ICAPRO.NombreProvincia AS NombreLocalidad, ANILOC.Municipio, ANICHO.FechaCaptura, ANICHO.NumRedes, ANICHO.LongitudRed, ANICHO.HoraDesde, ANICHO.HoraHasta, ANICHO.Campanna, ANICHO.CodigoEstacion, ANICHO.MannanaCodigoFuerza, ANICHO.MannanaCodigoDireccion, ANICHO.MannanaCodigoNubosidad, ANICHO.MannanaCodigoLluvia, ANICHO.TardeCodigoFuerza, ANICHO.TardeCodigoDireccion, ANICHO.TardeCodigoNubosidad, ANICHO.TardeCodigoLluvia, ANICHO.Observaciones AS ANICHO_Observaciones, ANICHO.Dato1 AS ANICHO_Dato1, ANICHO.Dato2 AS ANICHO_Dato2, ANICHO.Dato3 AS ANICHO_Dato3, ANICHO.Dato4 AS ANICHO_Dato4, ANICHO.Dato5 AS ANICHO_Dato5, ANICHO.Dato6 AS ANICHO_Dato6, ANICHO.Estado, ANIAHO.NumRegistro, ANIAHO.TipoRegistro, ANIAHO.CodigoCentro, ANIAHO.NumeroAnilla, ANIAHO.IdEspecie, ANIBRD.CodigoEspecie, ANIBRD.NombreEspecie, ANIAHO.Parentesco, ANIAHO.CodigoCondicion, ANIAHO.CodigoCircunstancia, ANIAHO.CodigoEdad, ANIAHO.CodigoSexo, ANIAHO.CodigoReclamo, ANIAHO.Ala, ANIAHO.F8, ANIAHO.Peso, ANIAHO.Tarso, ANIAHO.CodigoPlaca, ANIAHO.CodigoGrasa, ANIAHO.CodigoMusculo, ANIAHO.PrecisionFecha as CodigoPrecision, ANIAHO.CodigoEstado , ANIAHO.CodigoEstatus, ANIAHO.CodigoMuda, ANIAHO.IniAnillador,ANIAHO.Observaciones AS ANIAHO_Observaciones, ANIAHO.Dato1 AS ANIAHO_Dato1, ANIAHO.Dato2 AS ANIAHO_Dato2, ANIAHO.Dato3 AS ANIAHO_Dato3, ANIAHO.Dato4 AS ANIAHO_Dato4, ANIAHO.Dato5 AS ANIAHO_Dato5, ANIAHO.Dato6 AS ANIAHO_Dato6 FROM ICAPRO INNER JOIN (ANIBRD INNER JOIN (ANIMAT INNER JOIN (ANILOC INNER JOIN (ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera)  ON ANILOC.CodigoLocalidad = ANICHO.CodLocalidad)  ON (ANIMAT.CodigoAnillador = ANICHO.CodAnillador OR ANIMAT.CodigoGrupo = ANICHO.CodAnillador))  ON ANIBRD.IdEspecie = ANIAHO.IdEspecie)  ON ICAPRO.CodigoProvincia = ANILOC.CodigoProvincia  
DELETE FROM Consultas
INSERT INTO Consultas SELECT DISTINCT ANICHO.NumHoja, ANICHO.CodigoHabitat, ANICHO.CodigoMetodo, ANILOC.CodigoLocalidad, ANILOC.NombreLocalidad & ', ' & ANILOC.Municipio & '. ' & ICAPRO.NombreProvincia AS NombreLocalidad, ANILOC.Municipio, ANICHO.FechaCaptura, ANICHO.NumRedes, ANICHO.LongitudRed, ANICHO.HoraDesde, ANICHO.HoraHasta, ANICHO.Campanna, ANICHO.CodigoEstacion, ANICHO.MannanaCodigoFuerza, ANICHO.MannanaCodigoDireccion, ANICHO.MannanaCodigoNubosidad, ANICHO.MannanaCodigoLluvia, ANICHO.TardeCodigoFuerza, ANICHO.TardeCodigoDireccion, ANICHO.TardeCodigoNubosidad, ANICHO.TardeCodigoLluvia, ANICHO.Observaciones AS ANICHO_Observaciones, ANICHO.Dato1 AS ANICHO_Dato1, ANICHO.Dato2 AS ANICHO_Dato2, ANICHO.Dato3 AS ANICHO_Dato3, ANICHO.Dato4 AS ANICHO_Dato4, ANICHO.Dato5 AS ANICHO_Dato5, ANICHO.Dato6 AS ANICHO_Dato6, ANICHO.Estado, ANIAHO.NumRegistro, ANIAHO.TipoRegistro, ANIAHO.CodigoCentro, ANIAHO.NumeroAnilla, ANIAHO.IdEspecie, ANIBRD.CodigoEspecie, ANIBRD.NombreEspecie, ANIAHO.Parentesco, ANIAHO.CodigoCondicion, ANIAHO.CodigoCircunstancia, ANIAHO.CodigoEdad, ANIAHO.CodigoSexo, ANIAHO.CodigoReclamo, ANIAHO.Ala, ANIAHO.F8, ANIAHO.Peso, ANIAHO.Tarso, ANIAHO.CodigoPlaca, ANIAHO.CodigoGrasa, ANIAHO.CodigoMusculo, ANIAHO.PrecisionFecha as CodigoPrecision, ANIAHO.CodigoEstado , ANIAHO.CodigoEstatus, ANIAHO.CodigoMuda, ANIAHO.IniAnillador,ANIAHO.Observaciones AS ANIAHO_Observaciones, ANIAHO.Dato1 AS ANIAHO_Dato1, ANIAHO.Dato2 AS ANIAHO_Dato2, ANIAHO.Dato3 AS ANIAHO_Dato3, ANIAHO.Dato4 AS ANIAHO_Dato4, ANIAHO.Dato5 AS ANIAHO_Dato5, ANIAHO.Dato6 AS ANIAHO_Dato6 FROM ICAPRO INNER JOIN (ANIBRD INNER JOIN (ANIMAT INNER JOIN (ANILOC INNER JOIN (ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera)  ON ANILOC.CodigoLocalidad = ANICHO.CodLocalidad)  ON (ANIMAT.CodigoAnillador = ANICHO.CodAnillador OR ANIMAT.CodigoGrupo = ANICHO.CodAnillador))  ON ANIBRD.IdEspecie = ANIAHO.IdEspecie)  ON ICAPRO.CodigoProvincia = ANILOC.CodigoProvincia   WHERE ANIAHO.TipoRegistro='A'
DELETE FROM Consultas
INSERT INTO Consultas SELECT DISTINCT ANICHO.NumHoja, ANICHO.CodigoHabitat, ANICHO.CodigoMetodo, ANILOC.CodigoLocalidad, ANILOC.NombreLocalidad & ', ' & ANILOC.Municipio & '. ' & ICAPRO.NombreProvincia AS NombreLocalidad, ANILOC.Municipio, ANICHO.FechaCaptura, ANICHO.NumRedes, ANICHO.LongitudRed, ANICHO.HoraDesde, ANICHO.HoraHasta, ANICHO.Campanna, ANICHO.CodigoEstacion, ANICHO.MannanaCodigoFuerza, ANICHO.MannanaCodigoDireccion, ANICHO.MannanaCodigoNubosidad, ANICHO.MannanaCodigoLluvia, ANICHO.TardeCodigoFuerza, ANICHO.TardeCodigoDireccion, ANICHO.TardeCodigoNubosidad, ANICHO.TardeCodigoLluvia, ANICHO.Observaciones AS ANICHO_Observaciones, ANICHO.Dato1 AS ANICHO_Dato1, ANICHO.Dato2 AS ANICHO_Dato2, ANICHO.Dato3 AS ANICHO_Dato3, ANICHO.Dato4 AS ANICHO_Dato4, ANICHO.Dato5 AS ANICHO_Dato5, ANICHO.Dato6 AS ANICHO_Dato6, ANICHO.Estado, ANIAHO.NumRegistro, ANIAHO.TipoRegistro, ANIAHO.CodigoCentro, ANIAHO.NumeroAnilla, ANIAHO.IdEspecie, ANIBRD.CodigoEspecie, ANIBRD.NombreEspecie, ANIAHO.Parentesco, ANIAHO.CodigoCondicion, ANIAHO.CodigoCircunstancia, ANIAHO.CodigoEdad, ANIAHO.CodigoSexo, ANIAHO.CodigoReclamo, ANIAHO.Ala, ANIAHO.F8, ANIAHO.Peso, ANIAHO.Tarso, ANIAHO.CodigoPlaca, ANIAHO.CodigoGrasa, ANIAHO.CodigoMusculo, ANIAHO.PrecisionFecha as CodigoPrecision, ANIAHO.CodigoEstado , ANIAHO.CodigoEstatus, ANIAHO.CodigoMuda, ANIAHO.IniAnillador,ANIAHO.Observaciones AS ANIAHO_Observaciones, ANIAHO.Dato1 AS ANIAHO_Dato1, ANIAHO.Dato2 AS ANIAHO_Dato2, ANIAHO.Dato3 AS ANIAHO_Dato3, ANIAHO.Dato4 AS ANIAHO_Dato4, ANIAHO.Dato5 AS ANIAHO_Dato5, ANIAHO.Dato6 AS ANIAHO_Dato6 FROM ICAPRO INNER JOIN (ANIBRD INNER JOIN (ANIMAT INNER JOIN (ANILOC INNER JOIN (ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera)  ON ANILOC.CodigoLocalidad = ANICHO.CodLocalidad)  ON (ANIMAT.CodigoAnillador = ANICHO.CodAnillador OR ANIMAT.CodigoGrupo = ANICHO.CodAnillador))  ON ANIBRD.IdEspecie = ANIAHO.IdEspecie)  ON ICAPRO.CodigoProvincia = ANILOC.CodigoProvincia   WHERE  ANIAHO.IdEspecie IN (101,205)  AND  ANICHO.FechaCaptura BETWEEN CDate('01/01/2010') AND CDate('31/12/2010')  AND  ANILOC.CodigoProvincia = '28'  AND ANIAHO.TipoRegistro='A'
SELECT * FROM Consultas
DELETE FROM ICABAL
INSERT INTO ICABAL SELECT IdEspecie,  Sum(IIf(CodigoEdad='1',1,0)) AS NumPollos,  Sum(IIf(CodigoEdad<>'1',1,0)) AS NumVolanderos From Consultas WHERE TipoRegistro='A' GROUP BY IdEspecie ORDER BY IdEspecie
INSERT INTO ICABAL SELECT IdEspecie,  Sum(IIf(CodigoEdad='1',1,0)) AS NumPollos,  Sum(IIf(CodigoEdad<>'1',1,0)) AS NumVolanderos From Consultas WHERE TipoRegistro='R' GROUP BY IdEspecie ORDER BY IdEspecie
SELECT * FROM ICABAL
-- query: text output
SELECT * FROM Consultas ORDER BY NumHoja,NumRegistro
SELECT NombreEspecie, NumPollos, NumVolanderos FROM ICABAL INNER JOIN ANIBRD ON ICABAL.IdEspecie = ANIBRD.IdEspecie
-- reports
SELECT * FROM Consultas ORDER BY NumHoja,NumRegistro
SELECT ICABAL.*, ANIBRD.NombreEspecie AS NombreEspecie, ICABAL.NumPollos+ICABAL.NumVolanderos AS NumTotal FROM ICABAL, ANIBRD WHERE ICABAL.IdEspecie = ANIBRD.IdEspecie ORDER BY ICABAL.IdEspecie
SELECT ANICHO.*, ANILOC.NombreLocalidad AS NombreLocalidad, ANILOC.Municipio AS Municipio, ICAPRO.NombreProvincia AS NombreProvincia, ICAHAB.NombreHabitat AS NombreHabitat, ANIMCA.NombreMetodo AS NombreMetodo, ANIMAT.CodigoAnillador AS CodigoAnillador, ANILOC.CodigoLocalidad AS CodigoLocalidad, ANIMAT.NombreAnillador AS NombreAnillador, ANIAHO.*, ANIBRD.NombreEspecie AS NombreEspecie, ANIAHO.Observaciones AS ObservacionesD, ANILOC.Municipio AS EXPR1 FROM ANICHO, ANILOC, ICAHAB, ANIMCA, ANIMAT, ANIAHO, ANIBRD, ICAPRO WHERE ANICHO.CodLocalidad = ANILOC.CodigoLocalidad AND ANICHO.CodigoHabitat = ICAHAB.CodigoHabitat AND ANICHO.CodigoMetodo = ANIMCA.CodigoMetodo AND (ANICHO.CodAnillador = ANIMAT.CodigoAnillador OR ANICHO.Anillador = ANIMAT.CodigoAnillador  OR ANICHO.CodAnillador=ANIMAT.CodigoGrupo) AND ANICHO.IdCabecera = ANIAHO.IdCabecera AND ANIAHO.IdEspecie = ANIBRD.IdEspecie AND ANILOC.CodigoProvincia = ICAPRO.CodigoProvincia AND (ANICHO.NumHoja >= ?) AND (ANICHO.NumHoja <= ?)
-- counter
SELECT DISTINCT year(ANICHO.FECHACAPTURA) as Year FROM ANICHO
SELECT COUNT(*) as cont FROM ANIAHO WHERE (((ANIAHO.TipoRegistro)='A'));
SELECT COUNT(*) as cont FROM ANIAHO WHERE (((ANIAHO.TipoRegistro)='R'));
SELECT COUNT(*) as cont FROM ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera WHERE (((ANIAHO.TipoRegistro)='A') AND ((ANICHO.FechaCaptura)>=#1/1/2010# And (ANICHO.FechaCaptura)<=#12/31/2010#));
SELECT COUNT(*) as cont FROM ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera WHERE (((ANIAHO.TipoRegistro)='R') AND ((ANICHO.FechaCaptura)>=#1/1/2010# And (ANICHO.FechaCaptura)<=#12/31/2010#));
-- store: movements
SELECT * FROM MOVIMIENTOS INNER JOIN ALMACEN ON MOVIMIENTOS.IdMov = ALMACEN.TipoMovimiento
SELECT * FROM TIPOANILLAS where modelo ='0'
SELECT MAX(NumMov) as Maximo from ALMACEN
INSERT INTO Almacen VALUES (1, '0', 'AB', '1000', '1999', 1000, '15/03/2010', 'A')
SELECT * FROM ANIAHO WHERE Anilla='0...1000' AND TipoRegistro='A'
SELECT * FROM ALMACEN WHERE Modelo='0' AND val(NumInicial)<=1000 AND val(NumFinal)>=1099
SELECT * FROM ALMACEN WHERE Modelo='0' AND Inscripcion='AB' AND val(NumInicial)<=1000 AND val(NumFinal)>=1099 AND TipoMovimiento='D'
SELECT * FROM ALMACEN WHERE Modelo='0' AND Inscripcion='AB' AND val(NumInicial)<=1234 AND val(NumFinal)>=1234 AND TipoMovimiento='A'
SELECT * FROM MOVIMIENTOS INNER JOIN ALMACEN ON MOVIMIENTOS.IdMov=ALMACEN.TipoMovimiento 
SELECT * FROM MOVIMIENTOS INNER JOIN ALMACEN ON MOVIMIENTOS.IdMov=ALMACEN.TipoMovimiento WHERE Modelo='0'
SELECT * FROM MOVIMIENTOS INNER JOIN ALMACEN ON MOVIMIENTOS.IdMov=ALMACEN.TipoMovimiento WHERE Modelo='0' AND Inscripcion='AB' AND (NumInicial <= '1234' and NumFinal >= '1234')
SELECT * FROM MOVIMIENTOS INNER JOIN ALMACEN ON MOVIMIENTOS.IdMov=ALMACEN.TipoMovimiento WHERE Inscripcion='AB'
SELECT * FROM MOVIMIENTOS INNER JOIN ALMACEN ON MOVIMIENTOS.IdMov=ALMACEN.TipoMovimiento WHERE (NumInicial <= '1234' and NumFinal >= '1234')
DELETE FROM ALMACEN WHERE NumMov=99
-- store: models and selection
SELECT * FROM TIPOANILLAS
INSERT INTO TIPOANILLAS VALUES ('Y','YZ', 0)
SELECT DISTINCT CodigoAnillador, Trim(NombreAnillador) & ' (A)' AS NOMBRE, IdAnillador AS ID FROM ANIMAT ORDER BY CodigoAnillador
SELECT DISTINCT CodigoGrupo, Trim(NombreGrupo) & ' (G)' AS NOMBRE, CodigoGrupo AS ID FROM ANIMAT ORDER BY CodigoGrupo
SELECT DISTINCT RTrim(ANILOC.Municipio) & ',   ' & RTrim(ANILOC.NombreLocalidad) & ' .-. '& RTrim(ANILOC.CodigoLocalidad) as Localidad FROM ANICHO INNER JOIN ANILOC ON ANICHO.CodLocalidad = ANILOC.CodigoLocalidad
SELECT DISTINCT year(ANICHO.FechaCaptura) as Año FROM ANICHO
-- store: queries
SELECT DISTINCT year(ANICHO.FECHACAPTURA) as Year FROM ANICHO
SELECT DISTINCT year(ALMACEN.FECHA) as Year FROM ALMACEN
SELECT * FROM ALMACEN WHERE TipoMovimiento='A' ORDER BY MODELO, NUMINICIAL
SELECT * FROM ALMACEN ORDER BY MODELO, NUMINICIAL
SELECT DISTINCT Inscripcion FROM TIPOANILLAS
SELECT Count(*) AS Total FROM ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera WHERE ANIAHO.Anilla Like 'AB..%' AND ANIAHO.TipoRegistro='A' AND year(ANICHO.Fechacaptura)=2010
SELECT Count(*) AS Total FROM ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera WHERE ANIAHO.Anilla Like 'AB..%' AND ANIAHO.TipoRegistro='A' AND ANICHO.Fechacaptura<=#12/31/2010#
SELECT Count(*) AS Total FROM ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera WHERE ANIAHO.Anilla Like 'AB..%' AND ANIAHO.TipoRegistro='A'
SELECT almacen.TipoMovimiento, Sum(almacen.Cantidad) AS Suma FROM ALMACEN WHERE ALMACEN.Inscripcion='AB' AND almacen.Fecha<=#12/31/2010# GROUP BY almacen.TipoMovimiento
SELECT almacen.TipoMovimiento, Sum(almacen.Cantidad) AS Suma FROM ALMACEN WHERE ALMACEN.Inscripcion='AB' GROUP BY almacen.TipoMovimiento
UPDATE TIPOANILLAS SET Total=-3 WHERE INSCRIPCION='AB'
SELECT * FROM ALMACEN WHERE TipoMovimiento='A'
SELECT * FROM ALMACEN
SELECT * FROM TIPOANILLAS where Total<>0
