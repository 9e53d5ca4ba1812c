#include "sheets/ColumnasHojas.h"

namespace tarmel::hoja {

using namespace Qt::StringLiterals;

const std::vector<ColumnaDePantalla>& Columnas() {
    static const std::vector<ColumnaDePantalla> columnas{
        {u"ID"_s, 0, u"IdCabecera"_s, u"lblIdCabecera"_s},
        {u"Nº Hoja"_s, 1500, u"NumHoja"_s, u"txtNumHoja"_s},
        {u"Municipio"_s, 2000, u"Municipio"_s, {}},
        {u"Paraje"_s, 2500, u"NombreLocalidad"_s, {}},
        {u"Fecha captura"_s, 1200, u"FechaCaptura"_s, u"dtpCaptura"_s},
        {u"DifFecha"_s, 0, u"DifFecha"_s, {}},
        {u"Habitat"_s, 800, u"CodigoHabitat"_s, u"cboHabitat"_s},
        {u"Metodo"_s, 800, u"CodigoMetodo"_s, u"cboMetodo"_s},
        {u"Nº Redes"_s, 800, u"NumRedes"_s, u"txtNumRedes"_s},
        {u"Longitud red"_s, 1000, u"LongitudRed"_s, u"txtSuperficieRed"_s},
        {u"Hora inicio"_s, 1000, u"HoraDesde"_s, u"dtpHoraInicio"_s},
        {u"Hora fin"_s, 1000, u"HoraHasta"_s, u"dtpHoraFin"_s},
        {u"Campaña"_s, 1200, u"Campanna"_s, u"txtCampaña"_s},
        {u"Cod estación"_s, 1200, u"CodigoEstacion"_s, u"txtCodigoEstacion"_s},
        {u"Mañana fuerza viento"_s, 500, u"MannanaCodigoFuerza"_s, u"cboMañanaFuerzaViento"_s},
        {u"Mañana dirección viento"_s, 500, u"MannanaCodigoDireccion"_s, u"cboMañanaDireccionViento"_s},
        {u"Mañana nubosidad"_s, 500, u"MannanaCodigoNubosidad"_s, u"cboMañanaNubosidad"_s},
        {u"Mañana precipitación"_s, 500, u"MannanaCodigoLluvia"_s, u"cboMañanaPrecipitacion"_s},
        {u"Tarde fuerza viento"_s, 500, u"TardeCodigoFuerza"_s, u"cboTardeFuerzaViento"_s},
        {u"Tarde dirección viento"_s, 500, u"TardeCodigoDireccion"_s, u"cboTardeDireccionViento"_s},
        {u"Tarde nubosidad"_s, 500, u"TardeCodigoNubosidad"_s, u"cboTardeNubosidad"_s},
        {u"Tarde precipitación"_s, 500, u"TardeCodigoLluvia"_s, u"cboTardePrecipitacion"_s},
        {u"Observaciones"_s, 2000, u"Observaciones"_s, u"TxtObservaciones"_s},
        {u"v1"_s, 500, u"Dato1"_s, u"txtDato1"_s},
        {u"v2"_s, 500, u"Dato2"_s, u"txtDato2"_s},
        {u"v3"_s, 500, u"Dato3"_s, u"txtDato3"_s},
        {u"v4"_s, 500, u"Dato4"_s, u"txtDato4"_s},
        {u"v5"_s, 500, u"Dato5"_s, u"txtDato5"_s},
        {u"v6"_s, 500, u"Dato6"_s, u"txtDato6"_s},
        {u"Estado"_s, 500, u"Estado"_s, {}},
    };
    return columnas;
}

}  // namespace tarmel::hoja
