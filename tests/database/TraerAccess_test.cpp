#include "database/TraerAccess.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <map>
#include <set>

#include "database/Esquema.h"
#include "platform/ado/FileCheck.h"
#include "platform/basic/Printers.h"
#include "platform/basic/RuntimeError.h"
#include "support/ArchivoJet.h"
#include "support/BaseSuelta.h"
#include "support/DiscoAveriado.h"
#include "support/Interrupcion.h"

/// Access files are brought in whole, or not at all.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

const QString kMuestras = QStringLiteral(TARMEL_TESTS_DIR "/data/access/");
const QString kLector = QStringLiteral(TARMEL_BUILD_DIR "/tools/tarmel_access");

class TraerAccess : public testing::Test {
 protected:
    [[nodiscard]] QString ruta(const QString& nombre) const { return carpeta_.filePath(nombre); }
    [[nodiscard]] QString base() const { return ruta(u"Tarmel_11.mdb"_s); }
    [[nodiscard]] QString guardado() const { return ruta(u"Tarmel_11.access.mdb"_s); }
    [[nodiscard]] QStringList ficheros() const { return QDir(carpeta_.path()).entryList(QDir::Files); }

    static QByteArray leer(const QString& ruta) {
        QFile fichero(ruta);
        return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray();
    }
    static QByteArray muestra(const QString& nombre) { return leer(kMuestras + nombre + u".mdb"_s); }
    static void escribir(const QString& ruta, const QByteArray& bytes) {
        QFile fichero(ruta);
        ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
        ASSERT_EQ(fichero.write(bytes), bytes.size());
    }
    void poner(const QByteArray& bytes) const { escribir(base(), bytes); }

    TraidaAccess traer(const QString& lector = kLector, int silencio = kSilencioDelLector) {
        avances_.clear();
        return traerAccess(
            base(), lector, [this](const QString& avance) { avances_ << avance; }, silencio);
    }
    /// What the bring-in says when it gives up; empty when it went through.
    QString fallo(const QString& lector = kLector, int silencio = kSilencioDelLector) {
        try {
            (void)traer(lector, silencio);
            return {};
        } catch (const basic::RuntimeError& error) {
            return error.description();
        }
    }
    /// A reader that tells what the text says, so that files can be told that no sample holds.
    QString lectorQueDice(const QByteArray& texto) const {
        const QString programa = ruta(u"lector"_s);
        escribir(ruta(u"dicho"_s), texto);
        escribir(programa, "#!/bin/sh\nexec cat '" + QFile::encodeName(ruta(u"dicho"_s)) + "'\n");
        QFile(programa).setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        return programa;
    }

    QTemporaryDir carpeta_;
    QStringList avances_;
};

/// The rows of the truth, table by table.
using Verdad = std::map<QString, std::vector<QJsonObject>>;

Verdad verdadDe(const QString& nombre) {
    Verdad verdad;
    QFile fichero(kMuestras + nombre + u".expected.jsonl"_s);
    EXPECT_TRUE(fichero.open(QIODevice::ReadOnly));
    while (!fichero.atEnd()) {
        const QJsonObject linea = QJsonDocument::fromJson(fichero.readLine()).object();
        verdad[linea[u"table"_s].toString()].push_back(linea[u"row"_s].toObject());
    }
    return verdad;
}

QString comoTexto(double numero) {
    return u"#"_s + QString::number(numero, 'g', 15);
}

QString comoTexto(const QJsonValue& valor) {
    if (valor.isNull()) return u"-"_s;
    if (valor.isBool()) return comoTexto(valor.toBool() ? -1 : 0);
    return valor.isDouble() ? comoTexto(valor.toDouble()) : u"\""_s + valor.toString();
}

QString comoTexto(sqlite3_stmt* fila, int columna, bool numero) {
    const auto bytes = [&](const void* datos) {
        return QByteArray(static_cast<const char*>(datos), sqlite3_column_bytes(fila, columna));
    };
    switch (sqlite3_column_type(fila, columna)) {
        case SQLITE_NULL:
            return u"-"_s;
        case SQLITE_BLOB:
            return u"\"hex:"_s + QString::fromLatin1(bytes(sqlite3_column_blob(fila, columna)).toHex());
        case SQLITE_TEXT: {
            const QString texto = QString::fromUtf8(bytes(sqlite3_column_text(fila, columna)));
            return numero ? comoTexto(texto.toDouble()) : u"\""_s + texto;
        }
        default:
            return comoTexto(sqlite3_column_double(fila, columna));
    }
}

struct Muestra {
    const char16_t* nombre;
    bool anterior;
    const char16_t* contadores;  ///< last numbers of IdAni, IdCab, IdEsp, IdLoc
    const char16_t* avisos;
};

class TraerMuestra : public TraerAccess, public testing::WithParamInterface<Muestra> {};

TEST_P(TraerMuestra, TodoLlegaComoEstaba) {
    const Muestra& caso = GetParam();
    const QString nombre = QString::fromUtf16(caso.nombre);
    const QByteArray original = muestra(nombre);
    poner(original);
    ASSERT_TRUE(esArchivoDeAccess(base()));
    const TraidaAccess traida = traer();

    EXPECT_EQ(traida.anterior, caso.anterior);
    EXPECT_EQ(traida.guardado, guardado());
    EXPECT_EQ(leer(guardado()), original);
    EXPECT_EQ(ficheros(), (QStringList{u"Tarmel_11.access.mdb"_s, u"Tarmel_11.mdb"_s}));
    EXPECT_FALSE(esArchivoDeAccess(base()));
    EXPECT_TRUE(ado::isWhole(base()));
    EXPECT_EQ(traida.avisos.join(u'|').toStdString(), QString::fromUtf16(caso.avisos).toStdString());
    EXPECT_TRUE(avances_.filter(u"ANIAHO"_s).size() >= 1 && avances_.last().endsWith(u"%"_s));

    const BaseSuelta nueva(base());
    const Verdad verdad = verdadDe(nombre);
    qint64 filas = 0;
    std::set<QString> conFilas;
    for (const auto& [tabla, suyas] : verdad) {
        conFilas.insert(tabla);
        filas += static_cast<qint64>(suyas.size());
        QStringList columnas = suyas.front().keys();
        QStringList nombres;
        QList<bool> numeros;
        for (const QString& columna : columnas) {
            nombres << u"\"%1\""_s.arg(columna);
            numeros << std::ranges::any_of(suyas,
                                           [&](const QJsonObject& una) { return una[columna].isDouble(); });
        }
        QStringList esperadas;
        for (const QJsonObject& una : suyas) {
            QStringList campos;
            for (const QString& columna : columnas)
                campos << comoTexto(una[columna]);
            esperadas << campos.join(u'\x1f');
        }
        QStringList leidas;
        nueva.cadaFila(u"SELECT %1 FROM \"%2\""_s.arg(nombres.join(u','), tabla), [&](sqlite3_stmt* fila) {
            QStringList campos;
            for (int i = 0; i < columnas.size(); ++i)
                campos << comoTexto(fila, i, numeros[i]);
            leidas << campos.join(u'\x1f');
        });
        // Rows that grew lie elsewhere in the file; codes keep the order in which they are offered.
        const bool deCodigos = tabla.startsWith(u"ICA"_s) && tabla != u"ICABAL"_s;
        if (!deCodigos) esperadas.sort(), leidas.sort();
        EXPECT_EQ(leidas, esperadas) << tabla.toStdString();
    }
    EXPECT_EQ(traida.filas, filas);
    for (const QString& tabla :
         nueva.filas(u"SELECT name FROM sqlite_schema WHERE type='table' AND name NOT LIKE "
                     "'sqlite%' AND name <> 'tarmel_vistas'"_s)) {
        const bool vacia = nueva.valor(u"SELECT COUNT(*) FROM \"%1\""_s.arg(tabla)) == u"0";
        EXPECT_EQ(vacia, !conFilas.contains(tabla)) << tabla.toStdString();
    }
    EXPECT_EQ(
        nueva.valor(u"SELECT seq FROM sqlite_sequence WHERE name IN ('ANIMAT', 'ANICHO', 'ANIBRD', 'ANILOC') "
                    "ORDER BY name = 'ANILOC', name = 'ANIBRD', name = 'ANICHO'"_s),
        QString::fromUtf16(caso.contadores));
}

INSTANTIATE_TEST_SUITE_P(
    Muestras, TraerMuestra,
    testing::Values(
        Muestra{u"present", false, u"6|48000|63|28", u""}, Muestra{u"former", true, u"6|7|36|13", u""},
        Muestra{u"foreign", false, u"6|3|15|6",
                u"La columna Relación de Mis Señuelos tiene números de más de 15 cifras; queda como texto.|"
                "La columna Precio € de Mis Señuelos tiene números de más de 15 cifras; queda como texto."}),
    [](const auto& caso) { return QString::fromUtf16(caso.param.nombre).toStdString(); });

/// What a double does not tell, and how columns and keys stand.
TEST_F(TraerAccess, LoAjenoLlegaExactoYDetrasDeLoNuestro) {
    poner(muestra(u"foreign"_s));
    (void)traer();
    const BaseSuelta nueva(base());
    EXPECT_EQ(nueva.valor(u"SELECT \"Relación\", \"Precio €\" FROM \"Mis Señuelos\""_s),
              u"-12345678901234.5678;12.5|0.0001;-922337203685477.5808|-;-"_s);
    EXPECT_EQ(nueva.valor(u"SELECT Identidad FROM \"Mis Señuelos\" WHERE \"IdSeñuelo\" = 1"_s),
              u"{3F2504E0-4F89-11D3-9A0C-0305E82C3301}"_s);
    EXPECT_EQ(
        nueva.valor(u"SELECT group_concat(name) FROM (SELECT name FROM pragma_table_info('ANIAHO') WHERE cid "
                    "IN (11, 40, 41))"_s),
        u"IdEspecie,CodigoEspecie,Señal de pata"_s);
    EXPECT_EQ(nueva.valor(
                  u"SELECT type FROM pragma_table_info('ANICHO') WHERE name IN ('NumHoja', 'Observaciones') "
                  "ORDER BY name"_s),
              u"DOUBLE|TEXT"_s);
    EXPECT_EQ(nueva.valor(u"SELECT COUNT(*) FROM sqlite_schema WHERE type IN ('view', 'trigger')"_s),
              u"12"_s);
    EXPECT_EQ(nueva.valor(u"SELECT COUNT(*) FROM pragma_foreign_key_list('ANIAHO')"_s), u"2"_s);
}

constexpr double kHoja = 123456000001.0;
constexpr double kDia = 40252.0;  // 2010-03-15

ArchivoJet presente() {
    QFile fichero(kMuestras + u"present.mdb"_s);
    EXPECT_TRUE(fichero.open(QIODevice::ReadOnly));
    return ArchivoJet(fichero.readAll());
}
quint32 hojas(const ArchivoJet& jet) {
    return jet.definicionCon(ArchivoJet::comoBytes(kHoja), 12);
}
quint32 capturas(const ArchivoJet& jet) {
    return jet.definicionCon("AC..0002", 150);
}

struct Danado {
    const char* nombre;
    void (*danar)(ArchivoJet&);
    const char16_t* dice;
};

class TraerDanado : public TraerAccess, public testing::WithParamInterface<Danado> {};

/// What is wrong is said, and nothing has happened.
TEST_P(TraerDanado, NoSeTraeYSeDicePorQue) {
    ArchivoJet jet = presente();
    ASSERT_NE(hojas(jet), 0u);
    ASSERT_NE(capturas(jet), 0u);
    const QByteArray antes = jet.bytes;
    GetParam().danar(jet);
    ASSERT_NE(jet.bytes, antes);
    poner(jet.bytes);
    const QString dicho = fallo();
    EXPECT_TRUE(dicho.contains(QString::fromUtf16(GetParam().dice))) << dicho.toStdString();
    EXPECT_EQ(leer(base()), jet.bytes);
    EXPECT_EQ(ficheros(), QStringList{u"Tarmel_11.mdb"_s});
}

INSTANTIATE_TEST_SUITE_P(
    Archivos, TraerDanado,
    testing::Values(
        Danado{"CortadoEnUnaPagina", [](ArchivoJet& j) { j.bytes.chop(1000); }, u"página entera"},
        Danado{"CortadoPorLaMitad",
               [](ArchivoJet& j) { j.bytes.resize(j.paginas() / 2 * ArchivoJet::kPagina); }, u"dañado"},
        Danado{"SinUnaPaginaDeCapturas",
               [](ArchivoJet& j) { j.vaciarPagina(j.paginasDe(capturas(j)).at(1)); },
               u"Tabla ANIAHO: según el archivo tiene 150 filas, y se han leído"},
        Danado{"SinDefinicion", [](ArchivoJet& j) { j.vaciarPagina(static_cast<int>(hojas(j))); },
               u"Tabla ANICHO"},
        Danado{"SinUnaPaginaDelIndice", [](ArchivoJet& j) { j.vaciarPagina(j.paginasDe(2).at(0)); },
               u"MSysObjects"},
        Danado{"CuentaDeMas", [](ArchivoJet& j) { j.ponerFilas(hojas(j), 13); },
               u"Tabla ANICHO: según el archivo tiene 13 filas, y se han leído 12"},
        Danado{"FilaBorradaQueCuenta",
               [](ArchivoJet& j) {
                   const auto lugar = ArchivoJet::lugarDeRanura(j.paginasDe(hojas(j)).at(0), 0);
                   j.poner<quint16>(lugar, j.numero<quint16>(lugar) | ArchivoJet::kBorrada);
               },
               u"Tabla ANICHO: según el archivo tiene 12 filas, y se han leído 11"},
        Danado{"FilaQueNoCabe",
               [](ArchivoJet& j) {
                   j.poner<quint16>(ArchivoJet::lugarDeRanura(j.paginasDe(hojas(j)).at(0), 0), 0x0FFF & 4095);
               },
               u"Tabla ANICHO"},
        Danado{"MemoPerdido",
               [](ArchivoJet& j) {
                   for (int i = 1; i < j.paginas(); ++i)
                       if (j.bytes.mid(i * ArchivoJet::kPagina + 4, 4) == "LVAL") j.vaciarPagina(i);
               },
               u"la columna Observaciones no se puede leer"},
        Danado{"FechaAnterior",
               [](ArchivoJet& j) {
                   j.cambiar(hojas(j), ArchivoJet::comoBytes(kDia), ArchivoJet::comoBytes(-1.5));
               },
               u"Tabla ANICHO, fila 1 (IdCabecera = 1, IdCab = 1, NumHoja = 123456000001): la fecha de la "
               u"columna "
               "FechaCaptura no se puede leer"},
        Danado{"FechaLejana",
               [](ArchivoJet& j) {
                   j.cambiar(hojas(j), ArchivoJet::comoBytes(kDia), ArchivoJet::comoBytes(2e6));
               },
               u"la fecha de la columna FechaCaptura no se puede leer"},
        Danado{"ConContrasena", [](ArchivoJet& j) { j.bytes[0x42] = static_cast<char>(j.bytes[0x42] ^ 'x'); },
               u"protegido con contraseña"},
        Danado{"DeAccess97", [](ArchivoJet& j) { j.bytes[0x14] = 0; }, u"anterior a la 2000"},
        Danado{"SinMasQueElComienzo", [](ArchivoJet& j) { j.bytes.truncate(100); }, u"demasiado corto"}),
    [](const auto& caso) { return caso.param.nombre; });

/// Rows whose place has changed are read once, wherever they lie.
TEST_F(TraerAccess, FilasMovidasDosVecesYBorradas) {
    ArchivoJet jet = presente();
    ASSERT_TRUE(jet.moverOtraVez(capturas(jet)));
    const auto lugar = ArchivoJet::lugarDeRanura(jet.paginasDe(hojas(jet)).at(0), 0);
    jet.poner<quint16>(lugar, jet.numero<quint16>(lugar) | ArchivoJet::kBorrada);
    jet.ponerFilas(hojas(jet), 11);
    poner(jet.bytes);
    EXPECT_EQ(fallo(), QString());
    const BaseSuelta nueva(base());
    EXPECT_EQ(nueva.valor(u"SELECT COUNT(*), COUNT(DISTINCT IdCabecera || '/' || NumRegistro), "
                          "SUM(Anilla IS NOT NULL) FROM ANIAHO"_s),
              u"150;150;150"_s);
    EXPECT_EQ(nueva.valor(u"SELECT COUNT(*) FROM ANICHO"_s), u"11"_s);
}

TEST_F(TraerAccess, UnLectorQueFallaNoHaceNada) {
    poner(muestra(u"present"_s));
    const QByteArray antes = leer(base());
    const auto guion = [&](const QByteArray& orden) {
        const QString programa = ruta(u"lector"_s);
        QFile::remove(programa);
        escribir(programa, "#!/bin/sh\n" + orden + "\n");
        QFile(programa).setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        return programa;
    };
    const QByteArray bueno = "'" + QFile::encodeName(kLector) + "' \"$1\"";
    EXPECT_TRUE(fallo(guion(bueno + "; exec sleep 60"), 300).contains(u"parada"_s));
    EXPECT_TRUE(fallo(guion(bueno + " | head -c 40000")).contains(u"se cortó"_s));
    EXPECT_TRUE(fallo(guion(bueno + "; kill -SEGV $$")).contains(u"no acabó bien"_s));
    EXPECT_TRUE(fallo(guion(bueno + "; echo W")).contains(u"no se entiende"_s));
    EXPECT_TRUE(fallo(guion(bueno + "; touch \"$1\"")).contains(u"ha cambiado"_s));
    EXPECT_TRUE(fallo(ruta(u"nadie"_s)).contains(u"falta nadie"_s));
    EXPECT_EQ(leer(base()), antes);
    QFile::remove(ruta(u"lector"_s));
    EXPECT_EQ(ficheros(), QStringList{u"Tarmel_11.mdb"_s});
}

/// A disk that is full or refuses, at moments spread over the work: it is said, and nothing has happened.
TEST_F(TraerAccess, UnDiscoQueFallaNoHaceNada) {
    constexpr int kMomentos = 6;
    const QByteArray original = muestra(u"foreign"_s);
    DiscoAveriado disco;
    for (const auto averia : {DiscoAveriado::Averia::Lleno, DiscoAveriado::Averia::Error}) {
        disco.reparar();
        poner(original);
        ASSERT_EQ(fallo(), QString());
        for (const int n : momentos(disco.operaciones(averia), kMomentos)) {
            QFile::remove(base());
            QFile::remove(guardado());
            poner(original);
            disco.averiar(averia, n);
            const QString dicho = fallo();
            disco.reparar();
            EXPECT_FALSE(dicho.isEmpty()) << n;
            EXPECT_EQ(leer(base()), original) << n << dicho.toStdString();
            EXPECT_EQ(ficheros(), QStringList{u"Tarmel_11.mdb"_s}) << n;
        }
        QFile::remove(base());
    }
}

/// The name for the Access file may be taken, and another database's log may lie about.
TEST_F(TraerAccess, LoQueHayAlLadoSeRespeta) {
    const QByteArray original = muestra(u"foreign"_s);
    poner(original);
    escribir(guardado(), "otro");
    escribir(base() + u"-wal"_s, "diario");
    escribir(base() + u"-journal"_s, "otro diario");
    EXPECT_EQ(traer().guardado, ruta(u"Tarmel_11.access.2.mdb"_s));
    EXPECT_EQ(leer(guardado()), "otro");
    EXPECT_EQ(leer(ruta(u"Tarmel_11.access.2.mdb"_s)), original);
    EXPECT_EQ(leer(base() + u"-wal.anterior"_s), "diario");
    EXPECT_EQ(leer(base() + u"-journal.anterior"_s), "otro diario");
    EXPECT_TRUE(ado::isWhole(base()));

    // The same file once more: the name that it has serves.
    poner(original);
    EXPECT_EQ(traer().guardado, ruta(u"Tarmel_11.access.2.mdb"_s));
}

/// Rows that break our keys come along; the keys go, and what they were for still works.
TEST_F(TraerAccess, LasFilasQueRompenClavesSeQuedan) {
    poner("\0\1\0\0Standard Jet DB");
    const QString lector = lectorQueDice(
        "A\t1\n"
        "T\tANICHO\t3\t40\nC\tIdCabecera\tlong\t4\t0\t0\t0\nC\tIdCab\tlong\t4\t0\t0\t1\n"
        "C\tNumHoja\tnumeric\t17\t18\t0\t0\nC\tAnillador\tlong\t4\t0\t0\t0\nC\tGrupo\tbyte\t1\t0\t0\t0\n"
        "T\tANIAHO\t4\t0\nC\tIdCabecera\tlong\t4\t0\t0\t0\nC\tNumRegistro\tint\t2\t0\t0\t0\n"
        "C\tCodigoSexo\ttext\t4\t0\t0\t0\nC\tCodigoEspecie\tmemo\t0\t0\t0\t0\n"
        "T\tICASEX\t1\t0\nC\tCodigoSexo\ttext\t4\t0\t0\t0\n"
        "D\tANICHO\nW\t#1\t#1\t~123456000001\t-\t#255\nW\t#1\t#1\t~-1\t#7\t-\nW\t#41\t-\t-\t-\t-\nE\t3\n"
        "D\tANIAHO\nW\t#1\t#1\t\"M\t-\nW\t#1\t#1\t\"ZZ\t-\nW\t#1\t-\t-\t-\nW\t#2\t#1\t\"\t\"02390\nE\t4\n"
        "D\tICASEX\nW\t\"M\nE\t1\nZ\t3\t8\n");
    const QStringList avisos = traer(lector).avisos;
    for (const auto* aviso :
         {u"En ANICHO hay filas que no cumplen la clave (IdCab); queda como índice sin clave.",
          u"En ANIAHO hay filas que no cumplen la clave (IdCabecera, NumRegistro); queda como índice sin "
          u"clave.",
          u"En ANICHO hay filas con IdCabecera repetido; queda como índice con duplicados.",
          u"En ANIAHO hay 2 filas cuyo CodigoSexo no está en ICASEX; la relación ICASEXIANIAHO queda como "
          u"índice.",
          u"La tabla ICAFRO no está en el archivo de Access; queda vacía."}) {
        EXPECT_TRUE(avisos.contains(QString::fromUtf16(aviso))) << avisos.join(u'\n').toStdString();
    }
    ado::Connection conexion;
    conexion.OpenFile(base());
    // Two new sheets: their numbers lie behind the counter's last and past the one in use.
    for (int i = 0; i < 2; ++i) {
        conexion.Execute(u"INSERT INTO ANICHO (IdCabecera, NumHoja) VALUES (-1, 5)"_s);
        conexion.Execute(u"UPDATE ANICHO SET IdCabecera = IdCab WHERE IdCabecera = -1"_s);
    }
    EXPECT_NO_THROW(conexion.Execute(u"INSERT INTO ANIAHO (IdCabecera, NumRegistro) VALUES (1, 1)"_s));
    conexion.Close();
    const BaseSuelta nueva(base());
    EXPECT_EQ(nueva.valor(u"SELECT IdCabecera, IdCab, NumHoja FROM ANICHO"_s),
              u"1;1;123456000001|1;1;-1|41;-;-|42;42;5|43;43;5"_s);
    EXPECT_EQ(nueva.valor(u"SELECT CodigoSexo, NumRegistro FROM ANIAHO"_s), u"M;1|ZZ;1|-;-|;1|-;1"_s);
    EXPECT_EQ(nueva.valor(u"SELECT type FROM pragma_table_info('ANIAHO') WHERE name IN ('CodigoSexo', "
                          "'NumRegistro', 'CodigoEspecie')"_s),
              u"INT|VARCHAR(2)|TEXT"_s);
    EXPECT_EQ(nueva.valor(u"PRAGMA integrity_check"_s), u"ok"_s);
}

}  // namespace
}  // namespace tarmel
