#include "store/frm16_ConsultaAnillas.h"

#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "engine/FuncionesCombo.h"
#include "exchange/Lote.h"
#include "platform/basic/Text.h"
#include "platform/forms/Host.h"
#include "store/InformesAlmacen.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

const QString kTodos = u"TODOS"_s;
const QString kPuestas = u"Puestas"_s;

/// Stored rings are filled with dots to a fixed number of places. How many an inscription takes does not
/// follow from its length alone: a number is set behind a dot, some pairs have a dot of their own.
QString patronDe(const QString& inscripcion) {
    static const QStringList conPuntoDelante{u"10"_s, u"11"_s, u"12"_s, u"2"_s, u"3"_s, u"4"_s,
                                             u"5"_s,  u"6"_s,  u"7"_s,  u"8"_s, u"9"_s};
    static const QStringList sinPunto{u"2A"_s, u"1V"_s, u"3M"_s};
    static const QStringList conPuntoDetras{u"A"_s,  u"B"_s,  u"C"_s,  u"D"_s,  u"E"_s,  u"F"_s, u"G"_s,
                                            u"K"_s,  u"L"_s,  u"N"_s,  u"P"_s,  u"T"_s,  u"V"_s, u"Y"_s,
                                            u"1L"_s, u"2L"_s, u"3L"_s, u"1N"_s, u"2N"_s, u"3N"_s};
    if (conPuntoDelante.contains(inscripcion)) return u'.' + inscripcion;
    if (sinPunto.contains(inscripcion)) return inscripcion;
    if (conPuntoDetras.contains(inscripcion)) return inscripcion + u'.';
    if (inscripcion == u"0"_s) return u".."_s;
    return inscripcion + u".."_s;
}

bool hayAño(const QString& año) {
    return !año.isEmpty() && año != kTodos;
}

/// Opens the shared recordset afresh.
void abrir(const QString& sql) {
    gSQL = sql;
    gRS = ado::Recordset();
    gRS.Open(gSQL, gConexion);
}

QString contarPuestas(const QString& patron, const QString& año, const QString& tipo) {
    QString condicion = u"%' AND ANIAHO.TipoRegistro='A'"_s;
    if (hayAño(año)) {
        condicion += tipo == kPuestas ? u" AND year(ANICHO.Fechacaptura)="_s + año
                                      : u" AND ANICHO.Fechacaptura<=#12/31/"_s + año + u'#';
    }
    abrir(
        u"SELECT Count(*) AS Total FROM ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera "
        "WHERE ANIAHO.Anilla Like '"_s +
        patron + condicion);
    return gRS.Text(u"Total"_s);
}

/// What the movements leave of an inscription once the placed rings are taken off.
double remanente(const QString& inscripcion, const QString& año, double puestas) {
    abrir(
        u"SELECT almacen.TipoMovimiento, Sum(almacen.Cantidad) AS Suma FROM ALMACEN WHERE "
        "ALMACEN.Inscripcion='"_s +
        inscripcion + u'\'' + (hayAño(año) ? u" AND almacen.Fecha<=#12/31/"_s + año + u'#' : QString()) +
        u" GROUP BY almacen.TipoMovimiento"_s);
    double recibidas = 0;
    double devueltas = 0;
    qint16 traspasadas = 0;  // an overflow ends the count
    for (; !gRS.Eof(); gRS.MoveNext()) {
        const QString tipo = gRS.Text(u"TipoMovimiento"_s);
        const basic::Variant suma = gRS.Value(u"Suma"_s);
        if (tipo == u"A"_s) recibidas = suma.toDouble();
        if (tipo == u"D"_s) devueltas = suma.toDouble();
        if (tipo == u"T"_s) traspasadas = suma.toInteger();
    }
    return recibidas - puestas - devueltas - traspasadas;
}

}  // namespace

frm16_ConsultaAnillas::frm16_ConsultaAnillas() : Form(kName, u"Consultas de anillas"_s) {
    fraInforme.Holds({&optHistorialAlmacen, &Frame1, &optTotalPuestas, &lblAño, &cboAño, &optRemanenteModelos,
                      &lblAñoRemanente, &cboAñoRemanente});
    Frame1.Holds({&optRecibidas, &optDevueltas, &optTraspasadas, &optTodas});
    cboAño.SetAccessibleName(u"Año de las anillas puestas"_s);
    cboAñoRemanente.SetAccessibleName(u"Año del remanente"_s);
    cboAño.SetEnabled(false);
    cboAñoRemanente.SetEnabled(false);
    cmdAceptar.SetToolTip(u"Muestra el informe de lo marcado."_s);
    cmdCancelar.SetToolTip(u"Cierra esta pantalla."_s);
    cmdCancelar.Cancel = true;

    optHistorialAlmacen.Click = [this] { permitir(false, true, false); };
    optRemanenteModelos.Click = [this] { permitir(false, false, true); };
    optTotalPuestas.Click = [this] { permitir(true, false, false); };
    cmdAceptar.Click = [this] { cmdAceptar_Click(); };
    cmdCancelar.Click = [this] { cmdCancelar_Click(); };
}

void frm16_ConsultaAnillas::Load() {
    CentrarFormulario(*this);
    LlenarCombo(cboAño, gConexion, u"SELECT DISTINCT year(ANICHO.FECHACAPTURA) as Year FROM ANICHO"_s,
                u"Year"_s, QString());
    cboAño.AddItem(kTodos);
    LlenarCombo(cboAñoRemanente, gConexion, u"SELECT DISTINCT year(ALMACEN.FECHA) as Year FROM ALMACEN"_s,
                u"Year"_s, QString());
}

void frm16_ConsultaAnillas::FormKeyPress(int& character) {
    EnterComoTab(*this, character);
}

void frm16_ConsultaAnillas::permitir(bool añoPuestas, bool tipos, bool añoRemanente) {
    cboAño.SetEnabled(añoPuestas);
    for (forms::OptionButton* tipo : {&optRecibidas, &optDevueltas, &optTraspasadas})
        tipo->SetEnabled(tipos);
    cboAñoRemanente.SetEnabled(añoRemanente);
}

void frm16_ConsultaAnillas::cmdAceptar_Click() {
    const RelojDeArena reloj;
    if (optHistorialAlmacen.Value()) return mostrarHistorial();
    const bool puestas = optTotalPuestas.Value();
    CargarInscripciones();
    ContarAnillas(puestas ? cboAño.Text() : cboAñoRemanente.Text(), puestas ? kPuestas : u"Retenidas"_s);
    mostrarConsultaAnillasPuestas();
}

void frm16_ConsultaAnillas::mostrarHistorial() {
    TipoHistorial.clear();
    if (optRecibidas.Value()) {
        TipoHistorial = u"A"_s;
    } else if (optDevueltas.Value()) {
        TipoHistorial = u"D"_s;
    } else if (optTraspasadas.Value()) {
        TipoHistorial = u"T"_s;
    }
    gSQL = u"SELECT * FROM ALMACEN "_s +
           (TipoHistorial.isEmpty() ? QString() : u"WHERE TipoMovimiento='"_s + TipoHistorial + u"' "_s) +
           u"ORDER BY MODELO, NUMINICIAL"_s;
    gRS = ado::Recordset();
    gRS.Open(gSQL, gConexion, ado::Cursor::Keyset);
    const bool hayMovimientos = gRS.RecordCount() != 0;
    gRS = ado::Recordset();
    if (!hayMovimientos) {
        forms::MsgBox(u"No hay ningún movimiento de este tipo"_s, forms::box::Information);
        return;
    }
    mostrarConsultaAnillas();
}

void frm16_ConsultaAnillas::CargarInscripciones() {
    TablaInscripciones.clear();
    abrir(u"SELECT DISTINCT Inscripcion FROM TIPOANILLAS"_s);
    for (; !gRS.Eof(); gRS.MoveNext()) {
        const QString inscripcion = gRS.Text(u"Inscripcion"_s);
        TablaInscripciones.push_back({inscripcion, patronDe(inscripcion), QString()});
    }
    gRS = ado::Recordset();
}

void frm16_ConsultaAnillas::ContarAnillas(const QString& Anio, const QString& Tipo) {
    Lote lote(gConexion);
    for (FilaInscripcion& fila : TablaInscripciones) {
        fila.cuenta = contarPuestas(fila.patron, Anio, Tipo);
        const QString total = Tipo == kPuestas
                                  ? fila.cuenta
                                  : basic::CStr(remanente(fila.inscripcion, Anio, basic::Val(fila.cuenta)));
        gRS = ado::Recordset();
        lote.abrir();
        gSQL =
            u"UPDATE TIPOANILLAS SET Total="_s + total + u" WHERE INSCRIPCION='"_s + fila.inscripcion + u'\'';
        gConexion.Execute(gSQL);
        // The windows are painted, but nobody can click meanwhile.
        if (lote.entreFilas()) Refresh();
    }
}

void frm16_ConsultaAnillas::cmdCancelar_Click() {
    Unload();
}

}  // namespace tarmel
