#include "core/Programa.h"
#include "core/frm03_Principal.h"
#include "sheets/frm07_DetallesHojasCampo.h"

/// The commands of the main window.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

class Principal : public Programa {
 protected:
    void SetUp() override { arrancarComo(u"123456"_s); }
    static frm03_Principal& ventana() { return forms::pantallas().Get<frm03_Principal>(); }
    static forms::MenuItem& menu(const QString& nombre) {
        return dynamic_cast<forms::MenuItem&>(*ventana().Find(nombre));
    }
    static std::vector<forms::MenuItem*> entradas() {
        std::vector<forms::MenuItem*> todas;
        for (forms::Control* control : ventana().Controls()) {
            if (auto* entrada = dynamic_cast<forms::MenuItem*>(control)) todas.push_back(entrada);
        }
        return todas;
    }
    static void elegir(const QString& nombre) { ventana().UserClick(menu(nombre)); }
};

TEST_F(Principal, CadaEntradaDelMenuAbreAlgo) {
    QStringList barra;
    for (const forms::MenuItem* entrada : entradas()) {
        const auto hijos = std::ranges::count(entradas(), entrada, &forms::MenuItem::Parent);
        const bool hace = static_cast<bool>(entrada->Click);
        EXPECT_EQ(hace, hijos == 0 && !entrada->IsSeparator()) << entrada->Name().toStdString();
        if (!entrada->Parent()) barra << entrada->Caption();
    }
    EXPECT_EQ(
        barra.join(u'|'),
        u"&Actualización de tablas|&Hojas de campo|A&nillas|&Imprimir|&Datos|&Consultar Datos|&Utilidades|&Salir"_s);
    EXPECT_EQ(menu(u"mnuListadoAnillasTodas"_s).Parent(), &menu(u"mnuListadoAnillas"_s));
    EXPECT_EQ(menu(u"mnuBorrarHojas"_s).Parent(), &menu(u"mnuBorrar"_s));
}

TEST_F(Principal, CadaOrdenHaceAlgoYLaVentanaQuedaEnReposo) {
    QStringList ordenes;
    for (const forms::MenuItem* entrada : entradas()) {
        if (entrada->Click && entrada->Name() != u"mnuSalir"_s) ordenes << entrada->Name();
    }
    ASSERT_EQ(ordenes.size(), 20);
    for (const QString& orden : ordenes) {
        SCOPED_TRACE(orden.toStdString());
        host.punteros.clear();
        host.cajas.clear();
        host.ayudas.clear();
        elegir(orden);
        const bool abre = forms::pantallas().Active() != &ventana();
        EXPECT_TRUE(abre || !host.ayudas.isEmpty() || !host.cajas.empty());
        EXPECT_EQ(ventana().staStatusBar.PanelText(u"Messages"_s), QString());
        EXPECT_TRUE(host.punteros.empty() || host.punteros.back() == forms::Pointer::Default);
        for (const forms::Form* pantalla : forms::pantallas().All()) {
            if (pantalla != &ventana()) forms::pantallas().Unload(pantalla->Name());
        }
    }
}

struct Listado {
    QString orden;
    bool duplicados;
    QString titulo;
};

void PrintTo(const Listado& listado, std::ostream* os) {
    *os << listado.orden.toStdString();
}

class Listados : public Principal, public testing::WithParamInterface<Listado> {};

TEST_P(Listados, CargaLasCapturasDeNuevoComoLista) {
    elegir(u"mnuListadoAnillasTodas"_s);
    forms::pantallas().Get<frm07_DetallesHojasCampo>().cmdGrabar.SetCaption(u"de antes"_s);
    elegir(GetParam().orden);

    auto& capturas = forms::pantallas().Get<frm07_DetallesHojasCampo>();
    EXPECT_NE(capturas.cmdGrabar.Caption(), u"de antes"_s);
    EXPECT_EQ(forms::pantallas().Active(), &capturas);
    EXPECT_EQ(capturas.Caption(), GetParam().titulo);
    EXPECT_TRUE(capturas.lstDetallesCabecerasHoja.Visible());
    EXPECT_TRUE(gListaAnillas);
    EXPECT_EQ(gListaDuplicados, GetParam().duplicados);
    EXPECT_FALSE(gMostrarLista) << "the screen clears it itself";
    EXPECT_EQ(ventana().staStatusBar.PanelText(u"Messages"_s), QString());
    EXPECT_EQ(host.punteros.back(), forms::Pointer::Default);
    EXPECT_EQ(host.textosDeCajas(), QString());
}

INSTANTIATE_TEST_SUITE_P(
    Ordenes, Listados,
    testing::Values(Listado{u"mnuListadoAnillasTodas"_s, false, u"Listado de anillas"_s},
                    Listado{u"mnuListadoAnillasSeleccion"_s, false, u"Listado de anillas"_s},
                    Listado{u"mnuAnillasDuplicadas"_s, true, u"Listado de anillas duplicadas"_s}));

TEST_F(Principal, AbreLasPantallasQueHay) {
    elegir(u"mnuAlmacenAnillas"_s);
    EXPECT_EQ(forms::pantallas().Active()->Name(), u"frm15_AlmacenAnillas"_s);
    elegir(u"mnuNuevaHoja"_s);
    EXPECT_EQ(forms::pantallas().Active()->Name(), u"frm06_HojasCampo"_s);
    ventana().UserToolbar(ventana().tlbBarraHerramientas, u"Almacen"_s);
    EXPECT_EQ(forms::pantallas().Active()->Name(), u"frm15_AlmacenAnillas"_s)
        << "the same screen comes forward";
    elegir(u"mnuListadoHojas"_s);
    EXPECT_EQ(forms::pantallas().Active()->Name(), u"frm06_HojasCampo"_s);
    elegir(u"mnuAnillasGestionModelos"_s);
    EXPECT_EQ(forms::pantallas().Active()->Name(), u"frm17_GestionAnillas"_s);
    for (const auto& [orden, boton, pantalla] :
         {std::tuple{u"mnuActualizacionLocalidades"_s, u"Localidades"_s, u"frm04_ActualizarLocalidades"_s},
          std::tuple{u"mnuActualizacionEspecies"_s, u"Especies"_s, u"frm05_ActualizarEspecies"_s},
          std::tuple{u"mnuConsultarContador"_s, u"Contador"_s, u"frm14_ContadorRegistros"_s}}) {
        elegir(orden);
        const forms::Form* const abierta = forms::pantallas().Active();
        EXPECT_EQ(abierta->Name(), pantalla);
        EXPECT_FALSE(abierta->IsModal());
        elegir(u"mnuAlmacenAnillas"_s);
        ventana().UserToolbar(ventana().tlbBarraHerramientas, boton);
        EXPECT_EQ(forms::pantallas().Active(), abierta);
    }
    for (const auto& [orden, pantalla] :
         {std::pair{u"mnuImportarDatos"_s, u"frm09_ImportarDatos"_s},
          std::pair{u"mnuImprimir"_s, u"frm08_ImprimirHojas"_s},
          std::pair{u"mnuBorrarHojas"_s, u"frm13_BorrarRegistrosAnteriores"_s},
          std::pair{u"mnuExportarDatos"_s, u"frm10_ExportarDatos"_s}}) {
        elegir(orden);
        ASSERT_EQ(forms::pantallas().Active()->Name(), pantalla);
        EXPECT_TRUE(forms::pantallas().Active()->IsModal());
        forms::pantallas().Unload(pantalla);
    }
    EXPECT_EQ(ventana().staStatusBar.PanelText(u"Messages"_s), QString());
    EXPECT_EQ(host.punteros.back(), forms::Pointer::Default);
    EXPECT_TRUE(host.cajas.empty());
}

TEST_F(Principal, ConDuplicadosNoSeExporta) {
    sql(u"INSERT INTO ANICHO (IdCabecera, NumHoja, FechaCaptura) VALUES (1, 123456000001, #03/15/2010#)"_s);
    const QString especie = filas(u"SELECT TOP 1 IdEspecie FROM ANIBRD ORDER BY IdEspecie"_s);
    for (const QString& registro : {u"1"_s, u"2"_s})
        sql(u"INSERT INTO ANIAHO (IdCabecera, NumRegistro, TipoRegistro, CodigoCentro, NumeroAnilla, Anilla, "
            "IdEspecie) VALUES (1, "_s +
            registro + u", 'A', 'ESI', 'AB1234', 'AB..1234', "_s + especie + u")"_s);
    for (int vez = 0; vez < 2; ++vez) {
        if (vez == 0) elegir(u"mnuExportarDatos"_s);
        if (vez == 1) ventana().UserToolbar(ventana().tlbBarraHerramientas, u"ExportarDatos"_s);
        ASSERT_EQ(host.cajas.size(), 1u);
        EXPECT_EQ(host.cajas[0].text,
                  u"El proceso de exportación de datos no puede realizarse porque existen registros "
                  u"duplicados en la "
                  "base de datos. Por favor, revise la lista de registros duplicados."_s);
        EXPECT_EQ(host.cajas[0].buttons, forms::box::Critical);
        EXPECT_EQ(host.cajas[0].title, u"Exportación de datos"_s);
        host.cajas.clear();
    }
}

TEST_F(Principal, PanelesAyudaYSalida) {
    for (const QString& panel : {u"Messages"_s, u"Date"_s, u"Time"_s})
        ventana().UserPanel(ventana().staStatusBar, panel);
    EXPECT_EQ(host.ajustesDeFecha, 2);
    elegir(u"mnuAyuda"_s);
    EXPECT_EQ(host.ayudas.size(), 1);
    EXPECT_EQ(ventana().pbVersion.Caption(), u"Versión 3.0"_s);

    EXPECT_TRUE(termina([] { elegir(u"mnuSalir"_s); }));
    EXPECT_FALSE(gConexion.IsOpen());
}

TEST_F(Principal, CerrarLaVentanaTermina) {
    EXPECT_TRUE(termina([] { ventana().UserClose(); }));
    EXPECT_FALSE(gConexion.IsOpen());
    EXPECT_TRUE(host.cajas.empty());
}

}  // namespace
}  // namespace tarmel
