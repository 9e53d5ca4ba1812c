#include "exchange/A_IMP_ReciboDatos.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <algorithm>
#include <optional>

#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "exchange/A_EXP_EnvioDatos.h"
#include "exchange/Archivador.h"
#include "exchange/FicheroIntercambio.h"
#include "exchange/frm09_ImportarDatos.h"
#include "platform/basic/Text.h"
#include "platform/forms/Host.h"
#include "platform/forms/Pantallas.h"
#include "platform/system/Files.h"
#include "sheets/Anillas.h"

using namespace Qt::StringLiterals;

namespace tarmel {

QString gFicheroImportado;
QString gLineaFichero;
std::vector<QString> gNombresCampo;
std::vector<QString> gValoresCampo;

namespace {

constexpr int kPausaFichero = 1000;
constexpr int kCamposSinCodigoEspecie = 40;  // captures of the version before that column
constexpr size_t kCampoIdEspecie = 12;       // in those files
constexpr int kMaxCifrasClave = 15;

const QString kTemporal = u"Temp.zip"_s;

/// The archiver that unpacks the present archive.
std::optional<Archivador> archivador;

QString carpetaDatos() {
    return RutaEnAplicacion(u"Datos"_s);
}

QString enDatos(const QString& nombre) {
    return carpetaDatos() + QDir::separator() + nombre;
}

QStringList clavesDe(const QString& tabla) {
    static const QHash<QString, QStringList> claves{{u"ANIMAT"_s, {u"CodigoAnillador"_s}},
                                                    {u"ANILOC"_s, {u"IdLocalidad"_s}},
                                                    {u"ANIBRD"_s, {u"IdEspecie"_s}},
                                                    {u"ANICHO"_s, {u"IdCabecera"_s}},
                                                    {u"ANIAHO"_s, {u"IdCabecera"_s, u"NumRegistro"_s}}};
    return claves.value(tabla);
}

void avisarProblemas(const QString& nombre) {
    forms::MsgBox(u"Problemas con el archivo "_s + nombre);
}

/// How far the import is, on its screen.
class Avance {
 public:
    void comenzar(const QString& tabla) {
        if (!pantalla_) return;
        pantalla_->Progreso.SetValue(0);
        decir(u"Importando fichero "_s + tabla);
    }
    void decir(const QString& texto) {
        if (!pantalla_) return;
        pantalla_->lblFichProcesado.SetCaption(texto);
        pantalla_->Refresh();
    }
    void filas(int cuantas) {
        if (pantalla_) pantalla_->Progreso.SetMax(std::max(cuantas, 1));
    }
    void fila() {
        if (!pantalla_) return;
        forms::ProgressBar& barra = pantalla_->Progreso;
        if (barra.Value() < barra.Max()) barra.SetValue(barra.Value() + 1);
    }
    void repintar() {
        if (pantalla_) pantalla_->Refresh();
        forms::host().DoEvents();
    }

 private:
    frm09_ImportarDatos* pantalla_ = forms::pantallas().Loaded<frm09_ImportarDatos>();
};

/// A key stands in its statement without quotes: anything but a whole number would become part of the
/// condition.
QString clave(const QString& valor) {
    const QString numero = basic::Trim(valor);
    const QString cifras = numero.startsWith(u'-') ? numero.mid(1) : numero;
    const bool esNumero =
        !cifras.isEmpty() && std::ranges::all_of(cifras, [](QChar c) { return c >= u'0' && c <= u'9'; });
    if (!esNumero) throw basic::RuntimeError(basic::error::TypeMismatch);
    if (cifras.size() > kMaxCifrasClave) throw basic::RuntimeError(basic::error::Overflow);
    return numero;
}

/// A column name of a header goes into its statement as it is; one that is more than a name is refused there.
void comprobarNombre(const QString& nombre) {
    const bool esNombre = !nombre.isEmpty() && std::ranges::all_of(nombre, [](QChar c) {
        return c.isLetterOrNumber() || c == u'_';
    });
    if (!esNombre)
        throw basic::RuntimeError(basic::error::Statement, u"No hay ninguna columna «%1»."_s.arg(nombre),
                                  u"Motor de base de datos"_s);
}

void cortar(int numCampos, const QString& linea, QChar separador, std::vector<QString>& campos) {
    qsizetype desde = 0;
    for (int k = 1; k <= numCampos; ++k) {
        const qsizetype hasta = k < numCampos ? linea.indexOf(separador, desde) : -1;
        campos[static_cast<size_t>(k)] = hasta < 0 ? linea.mid(desde) : linea.mid(desde, hasta - desde);
        desde = hasta < 0 ? linea.size() : hasta + 1;
    }
}

bool esContador(const QString& campo) {
    return campo == u"IdAni"_s || campo == u"IdLoc"_s || campo == u"IdEsp"_s || campo == u"IdCab"_s;
}

/// The sex of files of the older numeric coding.
QString codigoSexo(const QString& valor) {
    static const QHash<QString, QString> letras{{u"0"_s, u"U"_s}, {u"1"_s, u"M"_s}, {u"2"_s, u"F"_s}};
    return letras.value(valor, valor);
}

QString valorParaInsertar(const QString& tabla, const QString& campo, const QString& valor) {
    if (campo == u"NumHoja"_s) return u"-1"_s;
    if (campo == u"CodigoSexo"_s) return codigoSexo(valor);
    const bool esCodigo = campo == u"Anillador"_s || campo == u"Grupo"_s;
    if (tabla == u"ANICHO"_s && esCodigo && valor.isEmpty()) return u"0"_s;
    return valor;
}

QString codigoDeEspecie(const QString& idEspecie) {
    ado::Recordset filas;
    filas.Open(u"SELECT CodigoEspecie FROM ANIBRD WHERE IdEspecie="_s + clave(idEspecie), gConexion);
    return filas.Text(u"CodigoEspecie"_s);
}

void insertar(const QString& tabla, int numCampos) {
    QString columnas;
    QString valores;
    for (size_t k = 1; k <= static_cast<size_t>(numCampos); ++k) {
        const QString& campo = gNombresCampo[k];
        if (esContador(campo)) continue;
        comprobarNombre(campo);
        if (!columnas.isEmpty()) {
            columnas += u',';
            valores += u',';
        }
        columnas += campo + u' ';
        valores += u'\'' + valorParaInsertar(tabla, campo, gValoresCampo[k]) + u"' "_s;
    }
    if (tabla == u"ANIAHO"_s && numCampos == kCamposSinCodigoEspecie) {
        columnas += u",CodigoEspecie"_s;
        valores += u", '"_s + codigoDeEspecie(gValoresCampo[kCampoIdEspecie]) + u'\'';
    }
    gConexion.Execute(u"INSERT INTO "_s + tabla + u" ("_s + columnas + u") VALUES ("_s + valores + u") "_s);
}

/// Counts the lines behind the header.
int contarFilas(const QString& ruta) {
    LectorFichero fichero(ruta);
    int filas = -1;
    for (; !fichero.fin(); ++filas)
        (void)fichero.leerLinea();
    return std::max(filas, 0);
}

/// The header: it says how many fields every line has.
int leerCabecera(LectorFichero& fichero) {
    gLineaFichero = fichero.leerLinea();
    const int numCampos = ContarCampos(gLineaFichero, kSeparadorFichero);
    if (numCampos > kMaxCamposFichero) throw formatoNoValido(u"El fichero tiene demasiados campos"_s);
    if (gLineaFichero.contains(u'\n'))
        throw formatoNoValido(u"Las líneas del fichero no terminan en retorno y avance de línea"_s);
    VaciarCampos(numCampos);
    LeerCabeceraCampos(numCampos, gLineaFichero, kSeparadorFichero);
    return numCampos;
}

/// False after a row that was refused.
bool importarTabla(const QString& tabla, Avance& avance) {
    avance.filas(contarFilas(gFicheroImportado));
    LectorFichero fichero(gFicheroImportado);
    const int numCampos = leerCabecera(fichero);
    Lote lote(gConexion);
    while (!fichero.fin()) {
        gLineaFichero = fichero.leerLinea();
        LeerValoresCampos(numCampos, gLineaFichero, kSeparadorFichero);
        lote.abrir();
        BorrarRegistroFichero(numCampos, tabla, clavesDe(tabla));
        if (!InsertarRegistroFichero(tabla, numCampos, lote)) return false;
        avance.fila();
        if (lote.entreFilas()) avance.repintar();
    }
    lote.cerrar();
    return true;
}

/// The same, and a file that is none of ours is told as one that gave problems.
bool importarFichero(const QString& tabla, Avance& avance) {
    try {
        return importarTabla(tabla, avance);
    } catch (const basic::RuntimeError& fallo) {
        if (fallo.number() != kFormatoNoValido) throw;
    }
    avisarProblemas(tabla);
    return false;
}

}  // namespace

void DescomprimirEnvio(const QString& Nombre) {
    gNombreFichero = Nombre;
    archivador.reset();
    // A link of that name would be written through.
    if (QFile::symLinkTarget(enDatos(kTemporal)).size() > 0) QFile::remove(enDatos(kTemporal));
    sys::copy(enDatos(Nombre + u".zip"_s), enDatos(kTemporal));
    Salida salida{{}, kMaxFicheroRecibido};
    for (const QString& tabla : tablasDeIntercambio())
        salida.ficheros << tabla + u".TXT"_s;
    archivador.emplace(Archivador::iniciar({u"e"_s, kTemporal}, carpetaDatos(), salida));
}

void BorrarFicheroRecibido(const QString& Carpeta, const QString& Fichero) {
    BorrarFichero(Carpeta, Fichero);
}

bool ImportarTablas(const QStringList& Tablas) {
    forms::host().SetPointer(forms::Pointer::Hourglass);
    Avance avance;
    const auto terminar = [](bool bien) {
        forms::host().SetPointer(forms::Pointer::Default);
        return bien;
    };
    for (const QString& tabla : Tablas) {
        gFicheroImportado = enDatos(tabla + u".TXT"_s);
        if (archivador) {
            archivador->esperar(kPausaFichero);
        } else {
            Archivador::pausar(kPausaFichero);
        }
        avance.comenzar(tabla);
        if (archivador && archivador->haFallado()) {
            avisarProblemas(gNombreFichero);
            return terminar(false);
        }
        // What cannot be removed would be taken for part of the next archive.
        for (const QString& nombre : sys::find(carpetaDatos(), u"ANI*.TXT"_s))
            quitarProteccion(enDatos(nombre));
        if (!sys::exists(gFicheroImportado)) continue;
        if (!importarFichero(tabla, avance)) return terminar(false);
    }
    avance.decir(u"Terminando el proceso de importación"_s);
    RenumerarHojasImportadas();
    return terminar(true);
}

int ContarCampos(const QString& Linea, QChar Separador) {
    return static_cast<int>(Linea.count(Separador)) + 1;
}

void VaciarCampos(int NumCampos) {
    gNombresCampo.assign(static_cast<size_t>(NumCampos) + 1, QString());
    gValoresCampo.assign(static_cast<size_t>(NumCampos) + 1, QString());
}

void LeerCabeceraCampos(int NumCampos, const QString& Linea, QChar Separador) {
    cortar(NumCampos, Linea, Separador, gNombresCampo);
}

void LeerValoresCampos(int NumCampos, const QString& Linea, QChar Separador) {
    cortar(NumCampos, Linea, Separador, gValoresCampo);
}

void BorrarRegistroFichero(int NumCampos, const QString& Tabla, const QStringList& Claves) {
    if (Claves.isEmpty()) return;
    QStringList condiciones;
    for (const QString& nombre : Claves) {
        const auto fin = gNombresCampo.begin() + NumCampos + 1;
        const auto campo = std::find(gNombresCampo.begin() + 1, fin, nombre);
        // With half of its key a row would take its neighbours along.
        if (campo == fin)
            throw basic::RuntimeError(basic::error::Statement,
                                      u"En el fichero de %1 falta la columna «%2»."_s.arg(Tabla, nombre),
                                      u"Motor de base de datos"_s);
        const auto k = static_cast<size_t>(campo - gNombresCampo.begin());
        condiciones << nombre + u'=' + clave(gValoresCampo[k]) + u' ';
    }
    gConexion.Execute(u"DELETE FROM "_s + Tabla + u" WHERE "_s + condiciones.join(u" AND "_s));
}

bool InsertarRegistroFichero(const QString& Tabla, int NumCampos, Lote& lote) {
    const bool insertado = basic::resumeNext([&] { insertar(Tabla, NumCampos); });
    if (insertado) return true;
    lote.cerrar();
    avisarProblemas(Tabla);
    return false;
}

void RenumerarHojasImportadas() {
    Lote lote(gConexion);
    ado::Recordset propietarios;
    propietarios.Open(u"SELECT DISTINCT CodAnillador FROM ANICHO WHERE NumHoja = -1 "_s, gConexion,
                      ado::Cursor::Keyset, ado::Lock::Optimistic);
    for (; !propietarios.Eof(); propietarios.MoveNext()) {
        const basic::Variant codigo = propietarios.Value(u"CodAnillador"_s);
        if (!codigo.isNull()) RenumerarHojasPendientes(codigo, lote);
    }
}

void RenumerarHojasPendientes(const basic::Variant& Codigo, Lote& lote) {
    const QString codigo = Codigo.joined();
    ado::Recordset hojas;
    hojas.Open(
        u"SELECT DISTINCTROW ANICHO.IdCabecera, ANICHO.CodAnillador FROM ANIMAT, ANICHO WHERE "
        "ANICHO.NumHoja = -1 AND (ANIMAT.CodigoAnillador = "_s +
            codigo + u" OR ANIMAT.CODIGOGRUPO= "_s + codigo + u" OR ANIMAT.IdAnillador="_s + codigo +
            u") ORDER BY FechaCaptura "_s,
        gConexion, ado::Cursor::Keyset, ado::Lock::Optimistic);
    for (; !hojas.Eof(); hojas.MoveNext()) {
        // A sheet without an owner has no series to be numbered in; it goes on waiting.
        const basic::Variant propietario = hojas.Value(u"CodAnillador"_s);
        if (propietario.isNull()) continue;
        lote.abrir();
        const basic::Variant numero = SiguienteNumHoja(propietario, propietario);
        gConexion.Execute(u"UPDATE ANICHO SET NumHoja="_s + numero.toText() + u" WHERE IdCabecera="_s +
                          hojas.Text(u"IdCabecera"_s));
        if (lote.entreFilas()) forms::host().DoEvents();
    }
}

}  // namespace tarmel
