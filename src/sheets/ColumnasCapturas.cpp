#include "sheets/ColumnasCapturas.h"

namespace tarmel::captura {

using namespace Qt::StringLiterals;

const std::vector<ColumnaDePantalla>& Columnas() {
    // Remarks and free data are the capture's own: the sheet, which the rows are joined with, has columns of
    // these names.
    static const std::vector<ColumnaDePantalla> columnas{
        {u"Nº Registro"_s, 1000, u"NumRegistro"_s, u"txtNumRegistro"_s},
        {u"Tipo Registro"_s, 300, u"TipoRegistro"_s, u"cboTipoRegistro"_s},
        {u"Centro"_s, 600, u"CodigoCentro"_s, u"cboCentro"_s},
        {u"Fecha Captura"_s, 1200, u"FechaCaptura"_s, u"lblTxtFecha"_s},
        {u"DifFecha"_s, 0, u"DifFecha"_s, {}},
        {u"Nº Anilla"_s, 1000, u"Anilla"_s, u"lblTxtAnilla"_s},
        {u"InfoAnilla"_s, 300, u"InfoAnilla"_s, u"cboInfoAnilla"_s},
        {u"Sustituida"_s, 1000, u"AnillaSustituida"_s, u"AnillaSustituida"_s},
        {u"Especie"_s, 3000, u"NombreEspecie"_s, u"dbcboEspecie"_s},
        {u"Edad"_s, 300, u"CodigoEdad"_s, u"cboEdad"_s},
        {u"Tamaño Nidada"_s, 300, u"TamañoNidada"_s, u"cboTamañoNidada"_s},
        {u"Sexo"_s, 300, u"CodigoSexo"_s, u"cboSexo"_s},
        {u"Reclamo"_s, 300, u"CodigoReclamo"_s, u"cboReclamo"_s},
        {u"Parentesco"_s, 300, u"Parentesco"_s, u"txtParentesco"_s},
        {u"Ala"_s, 800, u"Ala"_s, u"txtAla"_s},
        {u"F8"_s, 800, u"F8"_s, u"txtF8"_s},
        {u"Peso"_s, 800, u"Peso"_s, u"txtPeso"_s},
        {u"Tarso"_s, 800, u"Tarso"_s, u"txtTarso"_s},
        {u"Placa"_s, 300, u"CodigoPlaca"_s, u"cboPlaca"_s},
        {u"Grasa"_s, 300, u"CodigoGrasa"_s, u"cboGrasa"_s},
        {u"Iniciales"_s, 1000, u"IniAnillador"_s, u"txtIniciales"_s},
        {u"Hora"_s, 1200, u"HoraCaptura"_s, u"dtpHoraInicio"_s},
        {u"Estado"_s, 300, u"CodigoEstado"_s, u"cboEstado"_s},
        {u"Modo"_s, 300, u"CodigoEstatus"_s, u"cboModo"_s},
        {u"Muda"_s, 300, u"CodigoMuda"_s, u"cboMuda"_s},
        {u"Musculo"_s, 300, u"CodigoMusculo"_s, u"cboMusculo"_s},
        {u"Observaciones"_s, 1000, u"ANIAHO.Observaciones"_s, u"TxtObservaciones"_s},
        {u"v1"_s, 500, u"ANIAHO.Dato1"_s, u"txtDato1"_s},
        {u"v2"_s, 500, u"ANIAHO.Dato2"_s, u"txtDato2"_s},
        {u"v3"_s, 500, u"ANIAHO.Dato3"_s, u"txtDato3"_s},
        {u"v4"_s, 500, u"ANIAHO.Dato4"_s, u"txtDato4"_s},
        {u"v5"_s, 500, u"ANIAHO.Dato5"_s, u"txtDato5"_s},
        {u"v6"_s, 500, u"ANIAHO.Dato6"_s, u"txtDato6"_s},
        {u"Circunstancia"_s, 300, u"CodigoCircunstancia"_s, u"cboCircunstancia"_s},
        {u"Condicion"_s, 300, u"CodigoCondicion"_s, u"cboCondicion"_s},
        {u"Transporte"_s, 300, u"CodigoTransporte"_s, u"cboTransporte"_s},
        {u"Manipulación"_s, 300, u"CodigoManipulacion"_s, u"cboManipulacion"_s},
        {u"Nº Hoja"_s, 1500, u"NumHoja"_s, u"lblTxtNumHoja"_s},
        {u"ID"_s, 0, u"IdCabecera"_s, u"lblIdCabecera"_s},
    };
    return columnas;
}

QString LugarDeLaHoja(const ado::Recordset& hoja) {
    return hoja.Text(u"NombreLocalidad"_s) + u"   "_s + hoja.Text(u"Municipio"_s) + u".-."_s +
           hoja.Text(u"CodLocalidad"_s);
}

}  // namespace tarmel::captura
