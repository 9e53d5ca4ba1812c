#include "exchange/frm10_ExportarDatos.h"

#include <algorithm>

#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "engine/FuncionesCombo.h"
#include "platform/basic/Text.h"
#include "platform/forms/Guards.h"
#include "platform/forms/Host.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

QString sentenciaHojas() {
    QString sql =
        u"SELECT ANICHO.NumHoja AS NumHoja,ANIMAT.NombreAnillador & ' (' &  ANICHO.FechaCaptura & ')' AS "
        "Clave FROM ANIMAT INNER JOIN ANICHO ON (ANICHO.CodAnillador = ANIMAT.CodigoGrupo) OR "
        "(ANICHO.CodAnillador = ANIMAT.CodigoAnillador)"_s;
    if (!gEsCoordinador)
        sql += u" WHERE ANICHO.CodAnillador = "_s + gCodAnillador.joined() + u" OR ANICHO.Anillador="_s +
               gCodAnillador.joined() + u' ';
    return sql + u"ORDER BY ANICHO.NumHoja "_s;
}

/// The sheet's number, in front of the first blank of the combo's text.
double numeroDeHoja(const forms::ComboBox& combo) {
    const QString texto = combo.Text();
    return basic::CDbl(basic::Left(texto, basic::InStr(texto, u" "_s) - 1));
}

/// The selection as the verification has it: not to the letter what the files have.
QString condicionVerificacion(const SeleccionEnvio& s) {
    if (s.Seleccion == u"RangoHojas"_s)
        return u"WHERE (ANICHO.NumHoja BETWEEN "_s + basic::CStr(s.HojaInicial) + u" AND "_s +
               basic::CStr(s.HojaFinal) + u") "_s;
    if (s.Seleccion == u"Año"_s) return u"WHERE year(ANICHO.FechaCaptura)= "_s + basic::CStr(s.Año);
    if (s.Seleccion == u"Campaña"_s) return u"WHERE ANICHO.Campanna= '"_s + s.Campaña + u'\'';
    return condicionRangoFechas(s);
}

bool hayLocalidadesDesconocidas() {
    ado::Recordset filas;
    filas.Open(
        u"SELECT codlocalidad FROM ANICHO WHERE codlocalidad NOT IN (SELECT codigolocalidad FROM aniloc)"_s,
        gConexion);
    return !filas.Eof();
}

/// The number after the highest; a Null reads as 0, so that a database of the former version can send too.
qint16 numeroSiguiente(const QString& sentencia) {
    gSQL = sentencia;
    gRS = ado::Recordset();
    gRS.Open(gSQL, gConexion);
    const basic::Variant mayor = gRS.Value(u"NumeroEnvio"_s);
    gRS = ado::Recordset();
    return basic::CInt((mayor.isNull() ? 0 : mayor.toDouble()) + 1);
}

void ejecutar(const QString& sentencia) {
    gSQL = sentencia;
    gConexion.Execute(gSQL);
}

/// The dispatch number is taken and marked before any file is written, so that it travels in the files. The
/// marks count dispatches: they do not follow the selection.
void anotarEnvioDeGrupo() {
    gNumEnvio = numeroSiguiente(u"SELECT MAX(NumEGrupo) as NumeroEnvio FROM  ANICHO "_s);
    const QString numero = basic::CStr(gNumEnvio);
    ejecutar(u"UPDATE ANIMAT SET UltimoEnvio= "_s + numero);
    ejecutar(u"UPDATE ANICHO SET NumEGrupo="_s + numero);
}

void anotarEnvioDeAnillador() {
    const QString suyas =
        u"WHERE ANICHO.CodAnillador = ANIMAT.CodigoAnillador  AND ANIMAT.CodigoAnillador= "_s +
        gCodAnillador.joined();
    gNumEnvio = numeroSiguiente(u"SELECT MAX(NumEAnillador) as NumeroEnvio FROM  ANICHO, ANIMAT "_s + suyas);
    const QString numero = basic::CStr(gNumEnvio);
    ejecutar(u"UPDATE ANIMAT, ANICHO SET ANIMAT.UltimoEnvio=  "_s + numero + u' ' + suyas);
    ejecutar(u"UPDATE ANICHO, ANIMAT SET ANICHO.NumEAnillador= "_s + numero + u' ' + suyas);
}

void borrarFicherosDeTexto() {
    BorrarFichero(RutaEnAplicacion(u"Datos"_s), u"ANI*.txt"_s);
}

}  // namespace

frm10_ExportarDatos::frm10_ExportarDatos() : Form(kName, u"Exportar Datos"_s) {
    lblDescripcion.SetCaption(
        u"NOTA: Si dejamos todos los campos en blanco se exportarán               todas las hojas de campo "
        "(del Anillador/Coordinador)."_s);
    cboIni.SetAccessibleName(lblIni.Caption());
    cboFin.SetAccessibleName(lblFin.Caption());
    cboAño.SetAccessibleName(u"Año que se exporta"_s);
    cboCampaña.SetAccessibleName(u"Campaña que se exporta"_s);
    cboFecha1.SetAccessibleName(u"Primera fecha"_s);
    cboFecha2.SetAccessibleName(u"Última fecha"_s);
    cmdExportar.SetToolTip(u"Prepara el archivo con los datos elegidos en la carpeta Datos."_s);
    cmdSalir.SetToolTip(u"Cierra esta pantalla."_s);
    grpExportar.Holds({&optSeleccion, &lblIni, &cboIni, &lblFin, &cboFin, &optAño, &cboAño, &optCampaña,
                       &cboCampaña, &optFechas, &cboFecha1, &cboFecha2, &lblDescripcion});
    frmBarra.Holds({&lblFichProcesado, &Progreso});
    cmdSalir.Cancel = true;

    optSeleccion.Click = [this] { optSeleccion_Click(); };
    optAño.Click = [this] { optAño_Click(); };
    optCampaña.Click = [this] { optCampaña_Click(); };
    optFechas.Click = [this] { optFechas_Click(); };
    cmdExportar.Click = [this] { cmdExportar_Click(); };
    cmdSalir.Click = [this] { cmdSalir_Click(); };
}

void frm10_ExportarDatos::Load() {
    forms::host().SetPointer(forms::Pointer::Hourglass);
    CentrarFormulario(*this);
    activarSolo({});
    optAño.SetValue(true);
    LlenarCombo(cboAño, gConexion, u"SELECT DISTINCT year(ANICHO.FECHACAPTURA) as Year FROM ANICHO"_s,
                u"Year"_s, QString());
    LlenarCombo(cboCampaña, gConexion, u"SELECT DISTINCT ANICHO.Campanna as Campaña FROM ANICHO"_s,
                u"Campaña"_s, QString());
    for (forms::ComboBox* fecha : {&cboFecha1, &cboFecha2})
        LlenarCombo(*fecha, gConexion, u"SELECT DISTINCT ANICHO.FECHACAPTURA as Fecha FROM ANICHO"_s,
                    u"Fecha"_s, QString());
    for (forms::ComboBox* hoja : {&cboIni, &cboFin})
        LlenarCombo(*hoja, gConexion, sentenciaHojas(), u"NumHoja"_s, u"Clave"_s);
    forms::host().SetPointer(forms::Pointer::Default);
    frmBarra.SetVisible(false);
    grpExportar.SetVisible(true);
}

void frm10_ExportarDatos::Activate() {
    MostrarMensajeEstado(u"Exportando Datos..."_s);
}

void frm10_ExportarDatos::FormKeyPress(int& character) {
    EnterComoTab(*this, character);
}

void frm10_ExportarDatos::activarSolo(std::initializer_list<forms::ComboBox*> combos) {
    for (forms::ComboBox* combo : {&cboIni, &cboFin, &cboAño, &cboCampaña, &cboFecha1, &cboFecha2})
        combo->SetEnabled(std::ranges::find(combos, combo) != combos.end());
}

void frm10_ExportarDatos::optSeleccion_Click() {
    activarSolo({&cboIni, &cboFin});
}

void frm10_ExportarDatos::optAño_Click() {
    activarSolo({&cboAño});
}

void frm10_ExportarDatos::optCampaña_Click() {
    activarSolo({&cboCampaña});
}

void frm10_ExportarDatos::optFechas_Click() {
    activarSolo({&cboFecha1, &cboFecha2});
}

void frm10_ExportarDatos::mostrarMarcha(bool enMarcha) {
    grpExportar.SetVisible(!enMarcha);
    frmBarra.SetVisible(enMarcha);
}

/// The option's fields must be filled; otherwise the choice is shown again. True when they are.
bool frm10_ExportarDatos::exigir(std::initializer_list<forms::ComboBox*> combos, const QString& mensaje) {
    const bool llenos =
        std::ranges::none_of(combos, [](const forms::ComboBox* combo) { return combo->Text().isEmpty(); });
    if (llenos) return true;
    forms::MsgBox(mensaje);
    mostrarMarcha(false);
    Refresh();
    return false;
}

void frm10_ExportarDatos::cmdExportar_Click() {
    mostrarMarcha(true);
    lblFichProcesado.SetCaption(u"Verificando datos ..."_s);
    SeleccionEnvio seleccion;
    if (optSeleccion.Value()) return exportarHojas();
    if (optAño.Value()) {
        if (!exigir({&cboAño}, u"Debe indicar el año que desea exportar"_s)) return;
        seleccion.Seleccion = u"Año"_s;
        seleccion.Año = basic::CInt(cboAño.Text());
    } else if (optCampaña.Value()) {
        if (!exigir({&cboCampaña}, u"Debe indicar la campaña que desea exportar"_s)) return;
        seleccion.Seleccion = u"Campaña"_s;
        seleccion.Campaña = cboCampaña.Text();
    } else if (optFechas.Value()) {
        if (!exigir({&cboFecha1, &cboFecha2}, u"Debe indicar las fechas que desea exportar"_s)) return;
        seleccion.Seleccion = u"RangoFechas"_s;
        seleccion.FechaInicial = cboFecha1.Text();
        seleccion.FechaFinal = cboFecha2.Text();
    } else {
        return;
    }
    ExportarDatos(seleccion);
}

void frm10_ExportarDatos::exportarHojas() {
    if (!exigir({&cboIni, &cboFin}, u"Debe indicar las hojas que desea exportar"_s)) return;
    SeleccionEnvio seleccion;
    seleccion.Seleccion = u"RangoHojas"_s;
    seleccion.HojaInicial = numeroDeHoja(cboIni);
    seleccion.HojaFinal = numeroDeHoja(cboFin);
    if (seleccion.HojaInicial <= seleccion.HojaFinal) return ExportarDatos(seleccion);
    // The choice is not shown again: only cmdSalir goes on from here.
    forms::MsgBox(u"La hoja 'Inicial' debe ser menor que la 'Final'"_s);
}

void frm10_ExportarDatos::ExportarDatos(const SeleccionEnvio& seleccion) {
    if (enCurso_) return;
    const forms::SetWhile<bool> enCurso(enCurso_, true);
    preparar(seleccion);
}

void frm10_ExportarDatos::preparar(const SeleccionEnvio& seleccion) {
    if (hayLocalidadesDesconocidas()) {
        forms::MsgBox(
            u"No se puede realizar la exportación.\rHay localidades que no están dadas de alta.\rDebe "
            "actualizar la tabla de localidades"_s);
        return salir();
    }
    lblFichProcesado.SetCaption(u"Procesando..."_s);
    Refresh();
    forms::host().SetPointer(forms::Pointer::Hourglass);
    cmdExportar.SetEnabled(false);
    borrarFicherosDeTexto();
    if (!verificar(seleccion)) return;

    gNumEnvio = 1;
    if (gEsCoordinador) {
        anotarEnvioDeGrupo();
    } else {
        anotarEnvioDeAnillador();
    }
    const QString nombre = NombreSiguienteEnvio();
    try {
        ExportarTablas(gNumEnvio, seleccion, tablasDeIntercambio());
    } catch (const basic::RuntimeError& fallo) {
        if (fallo.number() != basic::error::DiskFull) throw;
        borrarFicherosDeTexto();
        forms::MsgBox(u"No hay sitio en el disco para los ficheros del envío, que no se ha preparado."_s,
                      forms::box::Exclamation, u"Exportación de datos"_s);
        return salir();
    }
    ComprimirEnvio(nombre);
    forms::MsgBox(u"Los datos han sido preparados correctamente."_s, forms::box::Information,
                  u"Exportación correcta"_s);
    borrarFicherosDeTexto();
    salir();
}

/// False when there is nothing to hand in, which has been told.
bool frm10_ExportarDatos::verificar(const SeleccionEnvio& seleccion) {
    ado::Recordset filas;
    filas.Open(
        u"SELECT * FROM (ANIMAT INNER JOIN  ANICHO ON ANIMAT.CodigoAnillador = ANICHO.CodAnillador OR "
        "ANIMAT.CodigoGrupo=ANICHO.CodAnillador) INNER JOIN  ANIAHO ON ANICHO.IdCabecera = "
        "ANIAHO.IdCabecera "_s +
            condicionVerificacion(seleccion),
        gConexion);
    if (filas.Eof() || filas.Bof()) {
        forms::host().SetPointer(forms::Pointer::Default);
        forms::MsgBox(u"No hay hojas de campo para exportar."_s, forms::box::Information, u"Información"_s);
        cmdExportar.SetEnabled(true);
        return false;
    }
    LeerDatosEnvio();
    // Foreign sheets are held back by the files' own condition; with rows at hand this cannot be.
    if (filas.RecordCount() == 0 && !gEsCoordinador) {
        forms::MsgBox(u"No tiene permisos para exportar Hojas que no sean suyas"_s, forms::box::Critical,
                      u"Buscar Hoja"_s);
        enCurso_ = false;
        Unload();
        return false;
    }
    return true;
}

void frm10_ExportarDatos::salir() {
    enCurso_ = false;
    cmdSalir_Click();
}

void frm10_ExportarDatos::cmdSalir_Click() {
    if (enCurso_) return;
    forms::host().SetPointer(forms::Pointer::Default);
    Unload();
}

}  // namespace tarmel
