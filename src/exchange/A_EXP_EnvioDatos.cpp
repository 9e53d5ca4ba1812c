#include "exchange/A_EXP_EnvioDatos.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>

#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "exchange/Archivador.h"
#include "exchange/FicheroIntercambio.h"
#include "exchange/frm10_ExportarDatos.h"
#include "platform/basic/Text.h"
#include "platform/forms/Pantallas.h"
#include "platform/system/Files.h"

using namespace Qt::StringLiterals;

namespace tarmel {

qint16 gNumEnvio = 0;
QString gEmailEnvio;

namespace {

constexpr int kLargoNombreTabla = 6;
constexpr int kLargoCodigo = 6;
constexpr int kPausaArchivador = 2000;
constexpr int kMilisegundosEntreRepintados = 100;

QString carpetaDatos() {
    return RutaEnAplicacion(u"Datos"_s);
}

/// How far the export is, on its screen. Repainting for every row would take longer than the rows.
class Avance {
 public:
    void decir(const QString& texto) {
        if (!pantalla_) return;
        pantalla_->lblFichProcesado.SetCaption(texto);
        pantalla_->Refresh();
    }
    void comenzar(int filas) {
        if (!pantalla_) return;
        pantalla_->Progreso.SetValue(0);
        pantalla_->Progreso.SetMax(filas);
        reloj_.start();
    }
    void fila(int hechas) {
        if (!pantalla_) return;
        pantalla_->Progreso.SetValue(hechas);
        if (reloj_.elapsed() < kMilisegundosEntreRepintados) return;
        pantalla_->Refresh();
        reloj_.start();
    }

 private:
    frm10_ExportarDatos* pantalla_ = forms::pantallas().Loaded<frm10_ExportarDatos>();
    QElapsedTimer reloj_;
};

QString literalFecha(const QString& fecha) {
    return basic::Mid(fecha, 4, 2) + u'/' + basic::Left(fecha, 2) + basic::Right(fecha, 5);
}

QString condicionSeleccion(const SeleccionEnvio& s) {
    if (s.Seleccion == u"RangoHojas"_s)
        return u"WHERE ANICHO.NumHoja BETWEEN "_s + basic::CStr(s.HojaInicial) + u" AND "_s +
               basic::CStr(s.HojaFinal) + u' ';
    if (s.Seleccion == u"Año"_s) return u"WHERE YEAR(ANICHO.FECHACAPTURA)='"_s + basic::CStr(s.Año) + u'\'';
    if (s.Seleccion == u"Campaña"_s) return u"WHERE ANICHO.Campanna='"_s + s.Campaña + u'\'';
    if (s.Seleccion == u"RangoFechas"_s) return condicionRangoFechas(s);
    return QString();
}

/// One join for every file: what is in one of them has its partners in the others.
QString sentenciaTabla(const QString& tabla, const SeleccionEnvio& seleccion) {
    QString sql = u"SELECT DISTINCT "_s + tabla +
                  u".* FROM  ANIMAT INNER JOIN  (ANILOC INNER JOIN  (ANIBRD INNER JOIN  (ANICHO INNER JOIN "
                  " ANIAHO ON  ANICHO.IdCabecera = ANIAHO.IdCabecera) ON  ANIBRD.IdEspecie = "
                  "ANIAHO.IdEspecie) ON  ANILOC.CodigoLocalidad = ANICHO.CodLocalidad) ON "
                  " (ANICHO.CodAnillador = ANIMAT.CodigoGrupo) OR (ANIMAT.CodigoAnillador = "
                  "ANICHO.CodAnillador) "_s;
    sql += condicionSeleccion(seleccion);
    if (!gEsCoordinador) sql += u"AND ANIMAT.CodigoAnillador= "_s + gCodAnillador.joined();
    // Of the catalogues only rows of one's own would travel: the others are delivered centrally.
    if (tabla == u"ANILOC"_s || tabla == u"ANIBRD"_s) sql += u" AND "_s + tabla + u".OrigenDatos<>0 "_s;
    return sql;
}

/// How a column goes into the file.
struct ColumnaFichero {
    int posicion;  ///< in the rows
    bool esSiNo;
    bool esDelGrupo;  ///< a coordinator sends every sheet as his group's
};

QString valorFichero(const ColumnaFichero& columna, const ado::Recordset& filas) {
    QString texto = columna.esDelGrupo ? gGrupo[0] : filas.Text(columna.posicion);
    if (columna.esSiNo) texto = texto == u"Verdadero"_s ? u"-1"_s : u"0"_s;
    return texto;
}

void escribirTabla(const QString& tabla, const SeleccionEnvio& seleccion, EscritorFichero& fichero,
                   Avance& avance) {
    gSQL = sentenciaTabla(tabla, seleccion);
    gRS = ado::Recordset();
    gRS.Open(gSQL, gConexion, ado::Cursor::Keyset, ado::Lock::Optimistic);
    if (gRS.Bof() && gRS.Eof()) return;
    gRS.MoveFirst();
    const int filas = gRS.RecordCount();
    avance.comenzar(filas);

    const std::vector<QString> tablas = gConexion.tableNames();
    const access_sql::TableDef* definicion =
        gConexion.schema().table(tablas.at(static_cast<size_t>(PosicionTabla(tabla, tablas))));
    QStringList nombres;
    std::vector<ColumnaFichero> columnas;
    for (const access_sql::ColumnDef& columna : definicion->columns) {
        nombres << columna.name;
        columnas.push_back({gRS.FieldIndex(columna.name), columna.type == access_sql::Type::Boolean,
                            tabla == u"ANICHO"_s && gCoordinador == 1 && columna.name == u"CodAnillador"_s});
    }
    fichero.escribir(nombres);

    QStringList valores;
    for (int i = 0; i < filas; ++i) {
        valores.clear();
        for (const ColumnaFichero& columna : columnas)
            valores << valorFichero(columna, gRS);
        gRS.MoveNext();
        fichero.escribir(valores);
        avance.fila(i);
    }
}

/// A file that could not be completed is emptied: half a table must not travel. A table that cannot be read
/// is missing in the dispatch; where the disk has no room for one, no dispatch is made.
void exportarTabla(const QString& tabla, const QString& ruta, const SeleccionEnvio& seleccion,
                   Avance& avance) {
    try {
        EscritorFichero fichero(ruta);
        try {
            escribirTabla(tabla, seleccion, fichero, avance);
            fichero.cerrar();
        } catch (const basic::RuntimeError&) {
            fichero.vaciar();
            throw;
        }
    } catch (const basic::RuntimeError& fallo) {
        if (fallo.number() == basic::error::DiskFull) throw;
    }
}

}  // namespace

const QStringList& tablasDeIntercambio() {
    static const QStringList tablas{u"ANIMAT"_s, u"ANICHO"_s, u"ANIAHO"_s};
    return tablas;
}

QString condicionRangoFechas(const SeleccionEnvio& seleccion) {
    return u"WHERE (ANICHO.FechaCaptura BETWEEN #"_s + literalFecha(seleccion.FechaInicial) + u"# AND #"_s +
           literalFecha(seleccion.FechaFinal) + u"#) "_s;
}

void ExportarTablas(int /*NumeroEnvio*/, const SeleccionEnvio& seleccion, const QStringList& Tablas) {
    Avance avance;
    for (const QString& elemento : Tablas) {
        avance.decir(u"Exportando fichero "_s + elemento);
        exportarTabla(elemento.left(kLargoNombreTabla),
                      carpetaDatos() + QDir::separator() + elemento + u".txt"_s, seleccion, avance);
        gRS = ado::Recordset();
    }
    avance.decir(u"Generando fichero comprimido"_s);
    BorrarFicherosVacios(carpetaDatos());
    gSQL.clear();
}

int PosicionTabla(const QString& Nombre, const std::vector<QString>& Catalogo) {
    for (size_t i = 0; i < Catalogo.size(); ++i) {
        if (Catalogo[i] == Nombre) return static_cast<int>(i);
    }
    return 0;
}

void BorrarFicherosVacios(const QString& Carpeta) {
    for (const QFileInfo& fichero : QDir(Carpeta).entryInfoList(QDir::Files | QDir::Hidden)) {
        // By its path and not as a pattern: a name may hold an asterisk here.
        if (fichero.size() == 0) basic::resumeNext([&] { sys::remove(fichero.filePath()); });
    }
}

QString NombreSiguienteEnvio() {
    const QString fecha = FechaActualAAMMDD();
    const double remitente = gCoordinador == 1 ? basic::Val(gGrupo[0]) : basic::Val(gCodAnillador.joined());
    double mayor = 0;
    for (const QString& nombre : sys::find(carpetaDatos(), u"*"_s)) {
        if (!nombre.contains(fecha)) continue;
        if (basic::Val(basic::Left(nombre, kLargoCodigo)) != remitente) continue;
        const int punto = basic::InStr(nombre, u"."_s);
        if (punto > 2) mayor = std::max(mayor, basic::Val(basic::Mid(nombre, punto - 2, 2)));
    }
    return fecha + basic::Right(u"00"_s + basic::CStr(mayor + 1), 2);
}

void ComprimirEnvio(const QString& Nombre) {
    const QString provisional = Nombre + u".ZIP"_s;
    const QString rutaProvisional = carpetaDatos() + QDir::separator() + provisional;
    const QString remitente = gCoordinador == 1 ? gGrupo[0] : gAnillador[0];
    // The code is part of a file name, wherever it comes from.
    if (remitente.contains(u'/') || remitente.contains(u'\\'))
        throw basic::RuntimeError(basic::error::FileAccess);
    // What a dispatch left that ended before the renaming would be added to, not replaced.
    basic::resumeNext([&] { sys::remove(rutaProvisional); });

    Archivador archivador = Archivador::iniciar({u"a"_s, provisional, u"ANI*.TXT"_s}, carpetaDatos());
    archivador.esperar(kPausaArchivador);
    // It makes an archive of nothing, too, and may leave the beginning of one: neither is a dispatch.
    if (archivador.haFallado() || sys::find(carpetaDatos(), u"ANI*.TXT"_s).isEmpty())
        basic::resumeNext([&] { sys::remove(rutaProvisional); });
    sys::rename(rutaProvisional, carpetaDatos() + QDir::separator() + remitente + u'-' + Nombre + u".ZIP"_s);
}

void BorrarFichero(const QString& Carpeta, const QString& Fichero) {
    basic::resumeNext([&] { sys::removeMatching(Carpeta, Fichero); });
}

void LeerDatosEnvio() {
    gSQL = u"SELECT * FROM ANIMAT"_s;
    gRS = ado::Recordset();
    gRS.Open(gSQL, gConexion);
    const basic::Variant ultimo = gRS.Value(u"UltimoEnvio"_s);
    gNumEnvio = ultimo.isNull() ? qint16{0} : ultimo.toInteger();
    gEmailEnvio = gRS.Text(u"Email"_s);
    gRS = ado::Recordset();
}

}  // namespace tarmel
