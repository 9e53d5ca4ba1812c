#include <QFileInfo>
#include <map>

#include "queries/Consulta.h"
#include "support/DiscoAveriado.h"

using namespace Qt::StringLiterals;

// Selection, balance and text files: figures and bytes against loops over the same captures.
namespace tarmel {
namespace {

class Consultas : public Consulta {
 protected:
    static int consultar(const QString& condicion = {}, bool balanceA = false, bool balanceR = false) {
        QString where = condicion;
        gBalanceA = balanceA;
        gBalanceR = balanceR;
        return EjecutarConsulta(where, balanceA, balanceR);
    }
    template <typename Accion>
    static int errorDe(Accion&& accion) {
        try {
            accion();
        } catch (const basic::RuntimeError& fallo) {
            return fallo.number();
        }
        return 0;
    }
    [[nodiscard]] QStringList ficherosDeConsultas() const {
        return QDir(ruta(u"Consultas"_s)).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }
};

TEST_F(Consultas, TellTheNumberAndReplaceTheOneBefore) {
    const Claves todas = lasQue([](const Captura&) { return true; });
    EXPECT_EQ(consultar(), static_cast<int>(todas.size()));
    EXPECT_EQ(seleccionadas(), todas);
    EXPECT_EQ(host.textosDeCajas(),
              u"Se han seleccionado %1 registros que cumplen las condiciones."_s.arg(todas.size()));
    // A code criterion of the other type leaves a balance nothing, and that is told though a balance follows.
    EXPECT_EQ(consultar(u" WHERE  ANIAHO.TipoRegistro = 'R' "_s, true), 0);
    EXPECT_EQ(host.textosDeCajas(), u"No se generará el informe ni el fichero."_s);
    EXPECT_EQ(seleccionadas(), Claves());
    EXPECT_EQ(host.punteros.back(), forms::Pointer::Default);
}

TEST_F(Consultas, ABalanceAddsUpChicksAndFullGrownPerSpecies) {
    for (const bool anillamientos : {true, false}) {
        const QString tipo = anillamientos ? u"A"_s : u"R"_s;
        std::map<int, std::pair<int, int>> cuentas;
        for (const Captura& c : capturas) {
            if (!cuenta(c) || c.tipo != tipo || c.centro != u"ESI"_s) continue;
            auto& [pollos, volanderos] = cuentas[c.especie];
            if (c.edad == u"1"_s) ++pollos;
            if (!c.edad.isEmpty() && c.edad != u"1"_s) ++volanderos;
        }
        QStringList esperadas;
        QStringList lineas{u"Especie;Pollos;Volanderos;Total"_s};
        for (const auto& [especie, cuantos] : cuentas) {
            const auto& [pollos, volanderos] = cuantos;
            esperadas << u"%1;%2;%3"_s.arg(especie).arg(pollos).arg(volanderos);
            const QString nombre =
                filas(u"SELECT NombreEspecie FROM ANIBRD WHERE IdEspecie="_s + QString::number(especie));
            lineas << u"%1;%2;%3;%4"_s.arg(nombre).arg(pollos).arg(volanderos).arg(pollos + volanderos);
        }
        host.cajas.clear();
        consultar(u" WHERE ANIAHO.CodigoCentro = 'ESI' "_s, anillamientos, !anillamientos);
        EXPECT_EQ(host.textosDeCajas(), QString());
        GenerarBalance();
        EXPECT_EQ(host.textosDeCajas(),
                  u"Se han seleccionado %1 registros que cumplen las condiciones."_s.arg(cuentas.size()));
        EXPECT_EQ(filas(u"SELECT * FROM ICABAL ORDER BY IdEspecie"_s), esperadas.join(u'|'));
        EscribirBalance(u"balance"_s);
        QStringList escritas = QString::fromLatin1(leer(u"Consultas/balance.txt"_s)).split(u"\r\n"_s);
        EXPECT_EQ(escritas.takeLast(), QString());
        std::ranges::sort(escritas.begin() + 1, escritas.end());
        std::ranges::sort(lineas.begin() + 1, lineas.end());
        EXPECT_EQ(escritas, lineas);
    }
}

/// All that a capture and its sheet can hold, once filled and once empty; "%" is a value of its own.
TEST_F(Consultas, TheListingIsWrittenByteForByte) {
    sql(u"DELETE FROM ANIAHO"_s);
    sql(u"UPDATE ANICHO SET NumRedes=12, LongitudRed='36,5', HoraDesde='7:05', HoraHasta='13:30', "
        "Campanna='PASER', CodigoEstacion='E1', MannanaCodigoFuerza='0', MannanaCodigoDireccion='N', "
        "MannanaCodigoNubosidad='1', MannanaCodigoLluvia='2', TardeCodigoFuerza='3', "
        "TardeCodigoDireccion='NNW', TardeCodigoNubosidad='4', TardeCodigoLluvia='5', "
        "Observaciones='Cañón; 3 €', Dato1='a', Dato2='b', Dato3='c', Dato4='d', Dato5='e', Dato6='f', "
        "FechaCaptura='04/03/2010', CodigoHabitat='D5', CodigoMetodo='H' WHERE IdCabecera=2"_s);
    sql(u"UPDATE ANICHO SET CodigoHabitat=NULL, CodigoMetodo=NULL, FechaCaptura='31/12/2009' WHERE IdCabecera=1"_s);
    sql(u"INSERT INTO ANIAHO (IdCabecera, NumRegistro, TipoRegistro, CodigoCentro, NumeroAnilla, Parentesco, "
        "IdEspecie, CodigoEdad, CodigoSexo, CodigoReclamo, CodigoCondicion, CodigoCircunstancia, Ala, F8, "
        "Peso, "
        "Tarso, CodigoGrasa, CodigoPlaca, CodigoMusculo, HoraCaptura, PrecisionFecha, CodigoEstado, "
        "CodigoEstatus, CodigoMuda, IniAnillador, Observaciones, Dato1, Dato2, Dato3, Dato4, Dato5, Dato6) "
        "VALUES (2, 3, 'A', 'ESI', '1L0007', 'P1', 3, '4', 'F', 'N', '8', '20', '85,25', '62', '1234567,5', "
        "'0,5', '3', '9', '2', '8:15', '7', 'B', 'K', 2, 'BMI', 'Ojo ''rojo''', '1', '2', '3', '4', '5', '6')"_s);
    sql(u"INSERT INTO ANIAHO (IdCabecera, NumRegistro, IdEspecie) VALUES (1, 1, 2)"_s);
    ASSERT_EQ(consultar(), 2);
    EscribirListado(u"lista"_s);
    const QByteArray cabecera(
        "Hoja;Registro;Localidad;Habitat;Metodo;Campa\xF1"
        "a;Estacion;FechaCaptura;HoraInicio;HoraFinal;N\xBA"
        "Redes;Long.Redes;Ma\xF1"
        "anaFuerzaViento;Ma\xF1"
        "anaDirecc.Viento;Ma\xF1"
        "anaNubosidad;Ma\xF1"
        "anaPrecipitacion;TardeFuerzaViento;TardeDirecc.Viento;TardeNubosidad;TardePrecipitacion;Observ.Hoja;"
        "v1;v2;v3;v4;v5;v6;Centro;TipoRegistro;Anilla;Parentesco;Especie;Edad;Sexo;Reclamo;Condicion;"
        "Circunstancia;Ala;F8;Peso;Tarso;Grasa;Placa;Musculo;Hora;Estado;Modo;Muda;Iniciales;Observ.Detalle;"
        "v1;v2;v3;v4;v5;v6\r\n");
    ASSERT_EQ(cabecera.count(';'), 55);
    EXPECT_EQ(
        leer(u"Consultas/lista.txt"_s),
        cabecera + "123456000001;1;01002;;;;;31/12/2009;;;;;;;;;;;;;;;;;;;;;;;;00010" + QByteArray(24, ';') +
            "\r\n"
            "123456000002;3;90002;D5;H;PASER;E1;04/03/2010;7:05:00;13:30:00;12;36,5;0;N;1;2;3;NNW;4;5;"
            "Ca\xF1\xF3n; 3 \x80;a;b;c;d;e;f;ESI;A;1L0007;P1;00020;4;F;N;8;20;85,25;62;1234567,5;0,5;3;9;"
            "2;7;B;K;2;BMI;Ojo 'rojo';1;2;3;4;5;6\r\n");
    // A second one of the name, however it is spelt, takes its place; an empty name is a name.
    ASSERT_EQ(consultar(u" WHERE ANICHO.IdCabecera = 1"_s), 1);
    EscribirListado(u"LISTA"_s);
    EXPECT_EQ(leer(u"Consultas/lista.txt"_s).count('\n'), 2);
    EscribirListado({});
    EXPECT_EQ(ficherosDeConsultas(), (QStringList{u".txt"_s, u"lista.txt"_s}));
}

TEST_F(Consultas, AFailedStatementEndsAsAnObjectThatIsNotSet) {
    ASSERT_GT(consultar(), 0);
    EXPECT_EQ(errorDe([] { consultar(u" WHERE  ANIAHO.NumeroAnilla = 'O'Brien' "_s); }),
              basic::error::ObjectNotSet);
    sql(u"DROP TABLE ICABAL"_s);
    EXPECT_EQ(errorDe([] { GenerarBalance(); }), basic::error::ObjectNotSet);
    // The screen cannot fill its lists.
    sql(u"DROP TABLE ICAMUDA"_s);
    EXPECT_EQ(errorDe([] { static_cast<void>(pantalla()); }), basic::error::ObjectNotSet);
    EXPECT_EQ(host.punteros.back(), forms::Pointer::Default);
}

class ConsultasSinSitio : public Consultas {
 protected:
    /// The database is closed before its disk goes.
    void TearDown() override {
        forms::pantallas().Reset();
        reiniciarSesion();
    }
    DiscoAveriado disco;
};

TEST_F(ConsultasSinSitio, AFullDiskLeavesTheWorkTableWholeOrEmpty) {
    const Claves todas = lasQue([](const Captura&) { return true; });
    ASSERT_EQ(consultar(), static_cast<int>(todas.size()));
    disco.averiar(DiscoAveriado::Averia::Lleno, 1000000);
    consultar();
    const int operaciones = disco.operaciones(DiscoAveriado::Averia::Lleno);
    for (int n = 1; n <= operaciones; n += std::max(1, operaciones / 8)) {
        disco.averiar(DiscoAveriado::Averia::Lleno, n);
        const int error = errorDe([] { consultar(); });
        disco.reparar();
        const Claves quedan = seleccionadas();
        EXPECT_TRUE(quedan == todas || (quedan.empty() && error == basic::error::ObjectNotSet)) << n;
        if (n == 1) {
            EXPECT_EQ(error, basic::error::ObjectNotSet);
        }
    }
    EXPECT_EQ(consultar(), static_cast<int>(todas.size()));
}

TEST_F(Consultas, AFileThatCannotBeWrittenIsToldAndTheOneBeforeStays) {
    ASSERT_GT(consultar(), 0);
    QFile::link(u"/dev/full"_s, ruta(u"Consultas/lleno.txt"_s));
    QDir(ruta({})).mkpath(u"Consultas/carpeta.txt"_s);
    escribir(u"Consultas/antes.txt"_s, "lo de antes");
    const std::map<QString, int> numeros{
        {u"lleno"_s, basic::error::DiskFull},      {u"carpeta"_s, basic::error::FileAccess},
        {u"a/b"_s, basic::error::FileAccess},      {u"..\\fuera"_s, basic::error::FileAccess},
        {u"../fuera"_s, basic::error::FileAccess}, {QString(300, u'x'), basic::error::FileAccess},
    };
    for (const auto& [nombre, numero] : numeros) {
        EXPECT_EQ(errorDe([&] { EscribirListado(nombre); }), numero) << nombre.toStdString();
        EXPECT_EQ(errorDe([&] { EscribirBalance(nombre); }), numero) << nombre.toStdString();
    }
    EXPECT_EQ(ficherosDeConsultas(), (QStringList{u"antes.txt"_s, u"lleno.txt"_s}));
    EXPECT_TRUE(QFileInfo(u"/dev/full"_s).exists() && !QFileInfo(u"/dev/full"_s).isFile());
    QDir(ruta(u"Consultas"_s)).removeRecursively();
    EXPECT_EQ(errorDe([] { EscribirListado(u"x"_s); }), basic::error::PathNotFound);
}

}  // namespace
}  // namespace tarmel
