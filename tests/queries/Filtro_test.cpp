#include "queries/Consulta.h"

#include <functional>

using namespace Qt::StringLiterals;

// Criteria are chosen on the screen as a hand does; the two texts are compared to the letter, and the
// statement is run: what comes out is what a loop over the captures lets through.
namespace tarmel {
namespace {

class Filtro : public Consulta {
 protected:
    static void especie(const QString& principio) {
        elegir(control<forms::ComboBox>(u"dbcboEspecie"_s), principio);
        pulsar(u"B_SeleccionarEspecie"_s);
    }
    static void fechas(basic::Date desde, basic::Date hasta) {
        pantalla().UserSetDate(control<forms::DatePicker>(u"DesdeAnillamiento"_s), desde);
        pantalla().UserSetDate(control<forms::DatePicker>(u"HastaAnillamiento"_s), hasta);
        pulsar(u"B_SeleccionarAnillamiento"_s);
    }
    static void lugar(const QString& opcion, const QString& combo, const QString& principio) {
        pantalla().UserClick(control<forms::Control>(opcion));
        elegir(control<forms::ComboBox>(combo), principio);
        pulsar(u"B_SeleccionarLocalizacion"_s);
    }
    static void deCentro(const QString& combo, const QString& principio) {
        elegir(control<forms::ComboBox>(combo), principio);
        pulsar(u"B_SeleccionarCentro"_s);
    }
    static void anilla(const QString& numero) {
        escribirEn(pantalla(), control<forms::TextBox>(u"txtAnilla"_s), numero);
        pulsar(u"B_SeleccionarCentro"_s);
    }
    static void codigo(const QString& combo, const QString& principio) {
        elegir(control<forms::ComboBox>(combo), principio);
        pulsar(u"B_SeleccionarCodigosR"_s);
    }
    Claves consultar() {
        QString where = pantalla().BuscaFiltro();
        const int n = EjecutarConsulta(where, false, false);
        const Claves claves = seleccionadas();
        EXPECT_EQ(n, static_cast<int>(claves.size()));
        return claves;
    }
};

TEST_F(Filtro, TheExampleReadsBlankForBlank) {
    sql(u"UPDATE ANIAHO SET IdEspecie = IIf(NumRegistro < 3, 205, 101)"_s);
    EXPECT_EQ(pantalla().BuscaFiltro(), QString());
    EXPECT_EQ(TextoFiltro(), QString());

    especie(u"Phaethon rubricauda"_s);
    especie(u"Cygnus columbianus"_s);
    especie(u"Phaethon rubricauda"_s);  // not a second time: the line that is there is marked
    EXPECT_EQ(pantalla().ListaSeleccion.Count(), 2);
    EXPECT_EQ(pantalla().ListaSeleccion.SelectedText(), u"Phaethon rubricauda .-. 00650"_s);
    fechas(basic::Date::of(2010, 1, 1), basic::Date::of(2010, 12, 31));
    EXPECT_EQ(pantalla().Anillamiento.Caption(), u"Desde 01/01/2010\r\rHasta 31/12/2010"_s);
    lugar(u"OptionA2"_s, u"dbcboProvincia"_s, u"Madrid"_s);

    EXPECT_EQ(pantalla().BuscaFiltro(),
              u" WHERE  ANIAHO.IdEspecie IN (101,205)  AND  ANICHO.FechaCaptura BETWEEN CDate('01/01/2010') "
              "AND CDate('31/12/2010')  AND  ANILOC.CodigoProvincia = '28' "_s);
    EXPECT_EQ(TextoFiltro(),
              u"Filtro de la Consulta:\rEspecie/s: Phaethon rubricauda , Cygnus columbianus \rFecha/s: de "
              u"01/01/2010 a "
              "31/12/2010\rProvincia: Madrid"_s);

    // Everything is deleted but the dates.
    host.respuestas = {forms::box::AnswerYes};
    pulsar(u"BorrarTodo"_s);
    EXPECT_EQ(pantalla().BuscaFiltro(),
              u" WHERE  ANICHO.FechaCaptura BETWEEN CDate('01/01/2010') AND CDate('31/12/2010') "_s);
    pulsar(u"B_BorrarSeleccion"_s);
    EXPECT_EQ(pantalla().BuscaFiltro(), QString());
}

struct Criterio {
    const char* nombre;
    std::function<void()> elegir;
    QString condicion;
    QString linea;
    std::function<bool(const Consulta::Captura&)> cumple;
};

class CadaCriterio : public Filtro {
 protected:
    using C = Captura;
    [[nodiscard]] std::vector<Criterio> lugaresPosibles() const {
        return {
            {"paraje", [] { lugar(u"OptionA1"_s, u"dbcboLocalidad"_s, u"Río, Amurrio"_s); },
             u" ANICHO.CodLocalidad = '90002' "_s, u"Paraje: Río, Amurrio"_s,
             [](const C& c) { return c.hoja->lugar->codigo == u"90002"_s; }},
            {"municipio", [] { lugar(u"OptionA4"_s, u"dbcboMunicipio"_s, u"Amurrio, "_s); },
             u" ANILOC.Municipio = 'Amurrio' "_s, u"Municipio: Amurrio, Álava"_s,
             [](const C& c) { return c.hoja->lugar->municipio == u"Amurrio"_s; }},
            {"provincia", [] { lugar(u"OptionA2"_s, u"dbcboProvincia"_s, u"Évora"_s); },
             u" ANILOC.CodigoProvincia = '90' "_s, u"Provincia: Évora"_s,
             [](const C& c) { return c.hoja->lugar->provincia == u"90"_s; }},
            {"comunidad", [] { lugar(u"OptionA6"_s, u"cboComunidad"_s, u"PAIS VASCO"_s); },
             u" ICAPRO.CodigoComunidad = 18 "_s, u"Comunidad: PAIS VASCO"_s,
             [](const C& c) { return c.hoja->lugar->comunidad == 18; }},
            {"país", [] { lugar(u"OptionA3"_s, u"dbcboPais"_s, u"España"_s); },
             u" ICAPRO.CodigoPais = 'ES' "_s, u"País: España"_s,
             [](const C& c) { return c.hoja->lugar->pais == u"ES"_s; }},
        };
    }
    [[nodiscard]] std::vector<Criterio> personas() const {
        return {
            {"anillador", [] { deCentro(u"cboAnillador"_s, u"200001"_s); },
             u" (ANICHO.CodAnillador = 200001 OR ANICHO.Anillador= 200001) "_s, u"Anillador:  PEPE"_s,
             [](const C& c) { return c.hoja->propietario == kPepe || c.hoja->anillador == kPepe; }},
            // Whose code is no ringer's is taken for the group's by the join.
            {"grupo", [] { deCentro(u"cboAnillador"_s, u"900001"_s); },
             u" (ANIMAT.CodigoGrupo = 900001  OR ANICHO.Grupo= 900001) "_s, u"Grupo:  GRUPO"_s,
             [](const C&) { return true; }},
        };
    }
    [[nodiscard]] std::vector<Criterio> otros() const {
        const auto deCodigo = [](const char* nombre, const QString& combo, const QString& valor,
                                 const QString& condicion, const QString& linea, auto cumple) {
            return Criterio{nombre, [=] { codigo(combo, valor + u" .-. "_s); }, condicion, linea, cumple};
        };
        return {
            {"especies", [] { especie(u"Struthio"_s), especie(u"Gavia stellata"_s); },
             u" ANIAHO.IdEspecie IN (2,3) "_s, u"Especie/s: Struthio camelus , Gavia stellata "_s,
             [](const C& c) { return c.especie == 2 || c.especie == 3; }},
            {"fechas", [] { fechas(basic::Date::of(2010, 2, 2), basic::Date::of(2011, 9, 9)); },
             u" ANICHO.FechaCaptura BETWEEN CDate('02/02/2010') AND CDate('09/09/2011') "_s,
             u"Fecha/s: de 02/02/2010 a 09/09/2011"_s,
             [](const C& c) {
                 return c.hoja->fecha >= basic::Date::of(2010, 2, 2) &&
                        c.hoja->fecha <= basic::Date::of(2011, 9, 9);
             }},
            {"centro", [] { deCentro(u"cboCentro"_s, u"ESI"_s); }, u"ANIAHO.CodigoCentro = 'ESI' "_s,
             u"Centro:  Madrid, España"_s, [](const C& c) { return c.centro == u"ESI"_s; }},
            deCodigo("status", u"cboModo"_s, u"K"_s, u" ANIAHO.CodigoEstatus = 'K' "_s,
                     u"Status: En colonia"_s, [](const C& c) { return c.estatus == u"K"_s; }),
            deCodigo("muda", u"cboMuda"_s, u"2"_s, u" ANIAHO.CodigoMuda = 2"_s,
                     u"Muda: Examinada, sin muda"_s, [](const C& c) { return c.muda == 2; }),
            deCodigo("hábitat", u"cboHabitat"_s, u"A"_s, u" ANICHO.CodigoHabitat = 'A' "_s,
                     u"Hábitat: Medios marinos"_s, [](const C& c) { return c.hoja->habitat == u"A"_s; }),
            deCodigo("sexo", u"cboSexo"_s, u"M"_s, u" ANIAHO.CodigoSexo = 'M'"_s, u"Sexo: Macho"_s,
                     [](const C& c) { return c.sexo == u"M"_s; }),
            deCodigo("edad", u"cboEdad"_s, u"1"_s, u" ANIAHO.CodigoEdad = '1' "_s,
                     u"Edad: Pollo, aún no vuela"_s, [](const C& c) { return c.edad == u"1"_s; }),
            deCodigo("circunstancia", u"cboCircunstancia"_s, u"01"_s,
                     u" ANIAHO.CodigoCircunstancia = '01' "_s, u"Circunstancia: Ave o cuerpo hallado"_s,
                     [](const C& c) { return c.circunstancia == u"01"_s; }),
            deCodigo("condición", u"cboCondicion"_s, u"1"_s, u" ANIAHO.CodigoCondicion = '1' "_s,
                     u"Condición: Muerta, tiempo desconocido"_s,
                     [](const C& c) { return c.condicion == u"1"_s; }),
            deCodigo("método", u"cboMetodo"_s, u"A"_s, u" ANICHO.CodigoMetodo = 'A' "_s,
                     u"Método: Trampa accionada por el anillador"_s,
                     [](const C& c) { return c.hoja->metodo == u"A"_s; }),
            deCodigo("reclamo", u"cboReclamo"_s, u"U"_s, u" ANIAHO.CodigoReclamo = 'U' "_s,
                     u"Reclamo: Desconocido o no anotado"_s, [](const C& c) { return c.reclamo == u"U"_s; }),
            deCodigo("tipo", u"cboTipoRegistro"_s, u"R"_s, u" ANIAHO.TipoRegistro = 'R' "_s,
                     u"Tipo Registro: Recuperación"_s, [](const C& c) { return c.tipo == u"R"_s; }),
        };
    }
    [[nodiscard]] static Criterio deAnilla(const Captura& buscada) {
        return {"anilla", [&buscada] { anilla(buscada.anilla); },
                u" ANIAHO.NumeroAnilla = '"_s + buscada.anilla + u"' "_s, u"Anilla: "_s + buscada.anilla,
                [&buscada](const C& c) { return c.anilla == buscada.anilla; }};
    }
};

TEST_F(CadaCriterio, AloneSelectsWhatALoopLetsThrough) {
    std::vector<Criterio> todos = otros();
    std::ranges::move(lugaresPosibles(), std::back_inserter(todos));
    std::ranges::move(personas(), std::back_inserter(todos));
    todos.push_back(deAnilla(capturas[3]));
    for (const Criterio& criterio : todos) {
        SCOPED_TRACE(criterio.nombre);
        forms::pantallas().Unload(frm11_Consultas::kName);
        criterio.elegir();
        EXPECT_EQ(pantalla().BuscaFiltro(), u" WHERE "_s + criterio.condicion);
        EXPECT_EQ(gFiltroTexto, u'\r' + criterio.linea);
        const Claves esperadas = lasQue(criterio.cumple);
        EXPECT_GT(esperadas.size(), 0U);
        EXPECT_EQ(consultar(), esperadas);
    }
}

TEST_F(CadaCriterio, AllTogetherSelectOneCapture) {
    for (const Criterio& sitio : lugaresPosibles()) {
        for (const Criterio& persona : personas()) {
            SCOPED_TRACE(std::string(sitio.nombre) + " y " + persona.nombre);
            // Some capture that fits this place and person is changed so that it fits all the others.
            const auto una = std::ranges::find_if(capturas, [&](const Captura& c) {
                return cuenta(c) && sitio.cumple(c) && persona.cumple(c) && c.hoja->fecha.year() >= 2010 &&
                       c.hoja->fecha <= basic::Date::of(2011, 9, 9) &&
                       c.hoja->fecha >= basic::Date::of(2010, 2, 2);
            });
            ASSERT_NE(una, capturas.end());
            sql(u"UPDATE ANICHO SET CodigoHabitat='A', CodigoMetodo='A' WHERE NumHoja="_s +
                una->hoja->numero);
            sql(u"UPDATE ANIAHO SET IdEspecie=3, CodigoCentro='ESI', CodigoEstatus='K', CodigoMuda=2, "
                u"CodigoSexo='M', "
                "CodigoEdad='1', CodigoCircunstancia='01', CodigoCondicion='1', CodigoReclamo='U', "
                "TipoRegistro='R' WHERE NumeroAnilla='"_s +
                una->anilla + u"'"_s);

            forms::pantallas().Unload(frm11_Consultas::kName);
            // The order of the texts, which is not the order of choosing.
            std::vector<Criterio> todos = otros();
            todos.insert(todos.begin() + 2, sitio);
            todos.insert(todos.begin() + 3, persona);
            todos.insert(todos.begin() + 5, deAnilla(*una));
            QStringList condiciones;
            QString texto;
            for (const Criterio& criterio : todos) {
                condiciones << criterio.condicion;
                texto += u'\r' + criterio.linea;
            }
            for (auto criterio = todos.rbegin(); criterio != todos.rend(); ++criterio)
                criterio->elegir();
            EXPECT_EQ(pantalla().BuscaFiltro(), u" WHERE "_s + condiciones.join(u" AND "_s));
            EXPECT_EQ(gFiltroTexto, texto);
            EXPECT_EQ(consultar(), Claves{clave(*una)});
        }
    }
}

TEST_F(Filtro, WhatIsNotTakenPlaysNoPart) {
    lugar(u"OptionA2"_s, u"dbcboProvincia"_s, u"Évora"_s);
    // Another option drops what was taken, and its combo alone can be used.
    pantalla().UserClick(control<forms::Control>(u"OptionA3"_s));
    EXPECT_EQ(pantalla().LabelSeleccion.Caption(), u"Por País"_s);
    EXPECT_EQ(pantalla().BuscaFiltro(), QString());
    EXPECT_TRUE(pantalla().dbcboPais.Enabled());
    EXPECT_FALSE(pantalla().dbcboProvincia.Enabled());
    elegir(pantalla().dbcboPais, u"España"_s);
    EXPECT_EQ(pantalla().BuscaFiltro(), QString());
    // Taking nothing is taking any place.
    pantalla().UserClick(control<forms::Control>(u"OptionA6"_s));
    pulsar(u"B_SeleccionarLocalizacion"_s);
    EXPECT_TRUE(pantalla().OptionA5.Value());
    EXPECT_EQ(pantalla().LabelSeleccion.Caption(), u"Cualquier Registro"_s);
    // By hand the last option changes nothing until the selection is deleted.
    lugar(u"OptionA2"_s, u"dbcboProvincia"_s, u"Évora"_s);
    pantalla().UserClick(pantalla().OptionA5);
    EXPECT_EQ(pantalla().BuscaFiltro(), u" WHERE  ANILOC.CodigoProvincia = '90' "_s);
    pulsar(u"B_BorrarLocalizacion"_s);
    EXPECT_EQ(pantalla().BuscaFiltro(), QString());
    EXPECT_FALSE(pantalla().dbcboProvincia.Enabled());
    // The codes of people stay behind their names and play no part.
    deCentro(u"cboAnillador"_s, u"200001"_s);
    pulsar(u"B_BorrarCentro"_s);
    EXPECT_EQ(pantalla().CodigoAni.Caption(), u"200001"_s);
    EXPECT_EQ(pantalla().BuscaFiltro(), QString());
    codigo(u"cboSexo"_s, u"M"_s);
    pulsar(u"B_BorrarCodigosR"_s);
    EXPECT_EQ(pantalla().BuscaFiltro(), QString());
    EXPECT_EQ(host.textosDeCajas(), QString());
    // Days in their order.
    fechas(basic::Date::of(2010, 1, 2), basic::Date::of(2010, 1, 1));
    EXPECT_EQ(host.textosDeCajas(), u"La fecha de anillamiento 'Desde' debe ser menor que 'Hasta'"_s);
    EXPECT_EQ(pantalla().BuscaFiltro(), QString());
    fechas(basic::Date::of(2010, 1, 1), basic::Date::of(2010, 1, 1));
    EXPECT_EQ(pantalla().Anillamiento.Caption(), u"Desde 01/01/2010\r\rHasta 01/01/2010"_s);
}

TEST_F(Filtro, LinesOfTheSpeciesAreRemovedAfterAQuestion) {
    pulsar(u"B_BorrarLinea"_s);
    EXPECT_TRUE(host.cajas.empty());
    for (const QString& nombre : {u"Struthio"_s, u"Gavia stellata"_s, u"Gavia stellata squamata"_s})
        especie(nombre);
    pantalla().UserSelectRow(pantalla().ListaSeleccion, 1);
    pulsar(u"B_BorrarLinea"_s);
    EXPECT_EQ(host.cajas.back().buttons,
              forms::box::YesNo + forms::box::Critical + forms::box::DefaultButton2);
    EXPECT_EQ(pantalla().ListaSeleccion.Count(), 3);
    host.respuestas = {forms::box::AnswerYes};
    pulsar(u"B_BorrarLinea"_s);
    EXPECT_EQ(pantalla().BuscaFiltro(), u" WHERE  ANIAHO.IdEspecie IN (2,5) "_s);
    host.respuestas = {forms::box::AnswerYes};
    pulsar(u"B_BorrarTodo"_s);
    EXPECT_EQ(pantalla().ListaSeleccion.Count(), 0);
    EXPECT_EQ(pantalla().dbcboEspecie.Text(), QString());
}

TEST_F(Filtro, WhatTheListsHoldIsOfTheCapturesAlone) {
    EXPECT_EQ(pantalla().dbcboEspecie.ListCount(), 4);
    EXPECT_EQ(pantalla().dbcboEspecie.List(0), u"Gavia stellata .-. 00020"_s);
    EXPECT_EQ(pantalla().dbcboLocalidad.ListCount(), 4);
    EXPECT_EQ(pantalla().dbcboMunicipio.ListCount(), 4);
    EXPECT_EQ(pantalla().cboComunidad.ListCount(), 20);
    EXPECT_EQ(pantalla().cboAnillador.List(0), u"123456 .-. ANILLADOR 123456 (A)"_s);
    EXPECT_EQ(pantalla().cboAnillador.List(2), u"900001 .-. GRUPO (G)"_s);
    EXPECT_EQ(filas(u"SELECT Count(*) FROM ICAHAB"_s),
              QString::number(control<forms::ComboBox>(u"cboHabitat"_s).ListCount()));
}

}  // namespace
}  // namespace tarmel
