#include "core/Programa.h"
#include "sheets/Anillas.h"
#include "sheets/HojasComun.h"
#include "sheets/frm06_HojasCampo.h"
#include "sheets/frm07_DetallesHojasCampo.h"

/// What the stories of sheets and captures do not reach: the lists of rings, stopped fills, sheet numbers.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;
namespace key = forms::key;

class Hojas : public Programa {
 protected:
    void SetUp() override { arrancarComo(u"123456"_s); }

    static void hoja(int id, const QString& numHoja, const QString& dueño, const QString& fecha,
                     const QString& anillador = {}) {
        sql(u"INSERT INTO ANICHO (IdCabecera,NumHoja,CodAnillador,CodLocalidad,FechaCaptura,CodigoHabitat,"
            u"CodigoMetodo,HoraDesde,HoraHasta,Anillador,Grupo,Observaciones,Dato1) VALUES "
            u"(%1,%2,%3,'01002','%4',"
            u"'D5','H','7:00','8:00','%5',900001,'de la hoja','hoja')"_s.arg(QString::number(id), numHoja,
                                                                             dueño, fecha, anillador));
    }
    static void captura(int id, int num, const QString& tipo, const QString& anilla,
                        const QString& hora = u"8:00"_s) {
        sql(u"INSERT INTO ANIAHO "
            u"(IdCabecera,NumRegistro,TipoRegistro,CodigoCentro,NumeroAnilla,InfoAnilla,Anilla,"
            u"IdEspecie,CodigoEspecie,CodigoEdad,CodigoSexo,CodigoManipulacion,CodigoTransporte,"
            u"CodigoEstatus,"
            u"CodigoMuda,HoraCaptura,Observaciones) VALUES "
            u"(%1,%2,'%3','ESI','%4','2','%4',1910,'14640','3','U','N',"
            u"'0','U','0','%5','de la captura')"_s.arg(QString::number(id), QString::number(num), tipo,
                                                       anilla, hora));
    }
    /// Two sheets of one's own, one of somebody else, a ring put on twice.
    static void datos() {
        hoja(1, u"123456000001"_s, u"123456"_s, u"15/03/2010"_s);
        hoja(2, u"123456000002"_s, u"123456"_s, u"01/12/2009"_s);
        hoja(3, u"222222000001"_s, u"222222"_s, u"01/04/2010"_s, u"222222"_s);
        captura(1, 1, u"A"_s, u"1L.00001"_s);
        captura(1, 2, u"A"_s, u"1L.00002"_s);
        captura(2, 1, u"A"_s, u"1L.00002"_s);
        captura(3, 1, u"R"_s, u"1L.00009"_s);
    }

    static frm06_HojasCampo& hojas() { return forms::pantallas().Get<frm06_HojasCampo>(); }
    static frm07_DetallesHojasCampo& capturas() { return forms::pantallas().Get<frm07_DetallesHojasCampo>(); }
    static forms::ListView& lista() { return capturas().lstDetallesCabecerasHoja; }

    /// As the main window's commands open the capture screen as a list.
    static frm07_DetallesHojasCampo& abrirLista(bool duplicados = false, const QString& filtro = {}) {
        forms::runAction([&] {
            gListaAnillas = true;
            gListaDuplicados = duplicados;
            gMostrarLista = true;
            gFiltroAnillas = filtro;
            capturas().Show();
            capturas().SetCaption(duplicados ? u"Listado de anillas duplicadas"_s : u"Listado de anillas"_s);
        });
        return capturas();
    }
    /// A column of the list, row by row.
    static QString columna(int subItem) {
        QStringList textos;
        for (int fila = 0; fila < lista().Count(); ++fila)
            textos << lista().Cell(fila, subItem).trimmed();
        return textos.join(u' ');
    }
};

TEST_F(Hojas, ElNumeroDeHojaSigueAlMayorDelAnillador) {
    const auto siguiente = [] { return SiguienteNumHoja(gCodAnillador, gAnillador[0]).joined(); };
    EXPECT_EQ(siguiente(), u"123456000001");
    hoja(1, u"-1"_s, u"123456"_s, u"15/03/2010"_s);  // an imported sheet without a number
    EXPECT_EQ(siguiente(), u"123456000001");
    hoja(2, u"123456000045"_s, u"123456"_s, u"15/03/2010"_s);
    hoja(3, u"222222000099"_s, u"222222"_s, u"15/03/2010"_s);
    EXPECT_EQ(siguiente(), u"123456000046");
    hoja(4, u"123456999999"_s, u"123456"_s, u"15/03/2010"_s);
    EXPECT_EQ(siguiente(), u"123456000000");
}

TEST_F(Hojas, LaListaDeAnillasMuestraLasPropiasYAlCoordinadorTodas) {
    datos();
    abrirLista();
    EXPECT_EQ(columna(5), u"1L.00001 1L.00002 1L.00002");
    EXPECT_TRUE(lista().Visible());
    EXPECT_FALSE(capturas().cmdNuevo.Enabled());
    // Remarks and free data are the capture's, though the sheet has columns of these names.
    EXPECT_EQ(lista().Cell(0, 26), u"de la captura");
    EXPECT_EQ(lista().Cell(0, 27), QString());
    forms::runAction([] { capturas().Unload(); });

    gEsCoordinador = true;
    abrirLista();
    EXPECT_EQ(lista().Count(), 4);
}

TEST_F(Hojas, LaSeleccionRestringeLaListaUnaVez) {
    datos();
    abrirLista(false, u"(ANICHO.CodLocalidad='01002') AND (YEAR(ANICHO.FechaCaptura)='2009')"_s);
    EXPECT_EQ(columna(38), u"2");
    EXPECT_EQ(gFiltroAnillas, QString());
    EXPECT_FALSE(gMostrarLista);
}

TEST_F(Hojas, DeLaListaALaCapturaYVuelta) {
    datos();
    auto& pantalla = abrirLista();
    pantalla.UserSelectRow(lista(), 2);
    pantalla.UserKey(key::F5);
    EXPECT_FALSE(lista().Visible());
    EXPECT_EQ(pantalla.lblIdCabecera.Caption(), u"2");
    EXPECT_EQ(pantalla.lblTxtNumHoja.Caption(), u"123456000002");
    EXPECT_EQ(pantalla.lblTxtFecha.Caption(), u"01/12/2009");
    EXPECT_EQ(pantalla.lbltxtLocalidad.Caption(), u"Amurrio   Amurrio.-.01002");
    EXPECT_EQ(pantalla.lblTxtAnilla.Caption(), u"1L.00002");

    pantalla.UserKey(key::F7);
    EXPECT_TRUE(lista().Visible());
    EXPECT_EQ(pantalla.Caption(), u"Listado de anillas");
    pantalla.UserKey(key::F7);
    EXPECT_EQ(forms::pantallas().Loaded<frm07_DetallesHojasCampo>(), nullptr);
    EXPECT_FALSE(gListaAnillas);
    EXPECT_EQ(forms::pantallas().Loaded<frm06_HojasCampo>(), nullptr);  // a list has no sheet to go back to
}

TEST_F(Hojas, UnaFilaAbiertaConEnterSePuedeGrabarPeroChocaConsigoMisma) {
    datos();
    sql(u"INSERT INTO ALMACEN VALUES (1, 'L', '1L', '00001', '00099', 99, '01/01/2010', 'A')"_s);
    auto& pantalla = abrirLista();
    pantalla.UserSelectRow(lista(), 0);
    pantalla.UserKey(key::Enter);
    EXPECT_FALSE(lista().Visible());
    EXPECT_EQ(pantalla.Caption(), u"Detalle Hoja de Campo nº 123456000001");
    EXPECT_TRUE(pantalla.cmdGrabar.Enabled());
    EXPECT_TRUE(pantalla.cboEdad.Enabled());
    pantalla.UserKey(key::F3);
    EXPECT_EQ(host.textosDeCajas(),
              u"El anillamiento con número de anilla: 1L.00001\rya ha sido introducido en la base de datos.");
}

TEST_F(Hojas, UnCambioAbandonadoNoDaSuAnillaALaCapturaSiguiente) {
    datos();
    sql(u"INSERT INTO ALMACEN VALUES (1, 'L', '1L', '00001', '00099', 99, '01/01/2010', 'A')"_s);
    auto& pantalla = abrirLista();
    pantalla.UserSelectRow(lista(), 0);
    pantalla.UserKey(key::F12);
    pantalla.UserKey(key::F7);
    pantalla.UserSelectRow(lista(), 1);
    pantalla.UserKey(key::Enter);
    pantalla.UserKey(key::F3);
    EXPECT_NE(host.textosDeCajas(), QString());
    EXPECT_EQ(pantalla.txtNumAnilla.Text(), QString());
    pantalla.UserKey(key::F3);
    EXPECT_EQ(filas(u"SELECT Anilla FROM ANIAHO WHERE IdCabecera=1 ORDER BY NumRegistro"_s),
              u"1L.00001|1L.00002");
}

TEST_F(Hojas, LasDuplicadasSeCorrigenDesdeSuLista) {
    datos();
    sql(u"INSERT INTO ALMACEN VALUES (1, 'L', '1L', '00001', '00099', 99, '01/01/2010', 'A')"_s);
    auto& pantalla = abrirLista(true);
    EXPECT_EQ(columna(5), u"1L.00002 1L.00002");
    pantalla.UserSelectRow(lista(), 1);
    pantalla.UserKey(key::F12);
    const QString id = pantalla.lblIdCabecera.Caption();
    pantalla.txtNumAnilla.SetText({});
    escribirEn(pantalla, pantalla.txtNumAnilla, u"1l00003"_s);
    pantalla.UserKey(key::F3);
    EXPECT_EQ(host.textosDeCajas(), QString());
    EXPECT_EQ(filas(u"SELECT Count(*) FROM Datos_Duplicados"_s), u"0");
    EXPECT_EQ(filas(u"SELECT IdCabecera FROM ANIAHO WHERE Anilla='1L.00003'"_s), id);
    EXPECT_TRUE(lista().Visible());
    EXPECT_FALSE(gModificando);
}

TEST_F(Hojas, UnaListaVaciaSinHojasNoOfreceNada) {
    auto& pantalla = abrirLista(true);
    EXPECT_EQ(lista().Count(), 0);
    EXPECT_FALSE(pantalla.cmdNuevo.Enabled());
    EXPECT_FALSE(pantalla.cmdVerCaptura.Enabled());
    for (const int tecla : {key::F5, key::F11, key::F12})
        pantalla.UserKey(tecla);
    EXPECT_TRUE(lista().Visible());
    EXPECT_EQ(host.textosDeCajas(), QString());
}

TEST_F(Hojas, BorrarUnaCapturaDeLaListaCierraElHuecoDeSuHoja) {
    datos();
    auto& pantalla = abrirLista();
    pantalla.UserSelectRow(lista(), 0);
    host.respuestas = {forms::box::AnswerYes};
    pantalla.UserKey(key::F11);
    EXPECT_EQ(filas(u"SELECT IdCabecera,NumRegistro,Anilla FROM ANIAHO ORDER BY IdCabecera,NumRegistro"_s),
              u"1;1;1L.00002|2;1;1L.00002|3;1;1L.00009");
    EXPECT_EQ(lista().Count(), 2);
    host.cajas.clear();

    // The only capture of a sheet: there is nothing to renumber, which is said.
    pantalla.UserSelectRow(lista(), 1);
    host.respuestas = {forms::box::AnswerYes};
    pantalla.UserKey(key::F11);
    EXPECT_EQ(filas(u"SELECT Count(*) FROM ANIAHO WHERE IdCabecera=2"_s), u"0");
    ASSERT_EQ(host.cajas.size(), 2u);
    EXPECT_EQ(host.cajas[1].title, u"¡ERROR al ejecutar SQL!");
    EXPECT_TRUE(host.cajas[1].text.startsWith(u"Error nº: [94]"));
}

TEST_F(Hojas, UnaCapturaNuevaDeLaListaVaALaHojaDeSuFila) {
    datos();
    auto& pantalla = abrirLista();
    pantalla.UserSelectRow(lista(), 0);
    pantalla.UserKey(key::F5);
    pantalla.UserKey(key::F1);
    EXPECT_EQ(pantalla.txtNumRegistro.Text(), u"3");
    EXPECT_EQ(pantalla.lblIdCabecera.Caption(), u"1");
    EXPECT_EQ(pantalla.lblTxtNumHoja.Caption(), u"123456000001");
    EXPECT_EQ(pantalla.lblTxtFecha.Caption(), u"15/03/2010");
    EXPECT_TRUE(pantalla.cboCentro.HasFocus());
}

TEST_F(Hojas, SalirMientrasSeLlenaLaListaCierraLaPantalla) {
    datos();
    gEsCoordinador = true;
    int filasVistas = 0;
    host.alCederEventos = [&] {
        if (++filasVistas == 2) hojas().cmdSalir_Click();
    };
    forms::runAction([] { hojas().Show(); });
    EXPECT_EQ(filasVistas, 2);
    EXPECT_EQ(forms::pantallas().Loaded<frm06_HojasCampo>(), nullptr);

    filasVistas = 0;
    host.alCederEventos = [&] {
        if (++filasVistas == 2) capturas().UserKey(key::F7);
    };
    abrirLista();
    EXPECT_EQ(filasVistas, 2);
}

TEST_F(Hojas, UnaSentenciaQueFallaCierraLaListaSinDecirNada) {
    datos();
    forms::runAction([] {
        gListaAnillas = true;
        gFiltroAnillas = u"(ANICHO.CodAnillador= OR ANICHO.Anillador=)"_s;
        capturas().Show();
    });
    EXPECT_EQ(forms::pantallas().Loaded<frm07_DetallesHojasCampo>(), nullptr);
    EXPECT_EQ(host.textosDeCajas(), QString());
}

TEST_F(Hojas, LaPantallaSeVuelveACargarMientrasSeLlena) {
    datos();
    bool otraVez = false;
    host.alCederEventos = [&] {
        if (std::exchange(otraVez, true)) return;
        hojas().Show();
        hojas().UserActivate();
        forms::runAction([] { capturas().Show(); });
    };
    abrirLista();
    EXPECT_EQ(columna(5), u"1L.00001 1L.00002 1L.00002");
}

TEST_F(Hojas, ElOrdenPorFechaVaPorDiasYAlternaEntreLasListas) {
    datos();
    auto& pantalla = abrirLista();
    pantalla.UserColumnClick(lista(), 4);
    EXPECT_EQ(columna(3), u"01/12/2009 15/03/2010 15/03/2010");
    forms::runAction([] { hojas().Show(); });
    auto& cabeceras = hojas().lstCabecerasHoja;
    hojas().UserColumnClick(cabeceras, 5);  // the second click of the session: descending
    EXPECT_EQ(cabeceras.Cell(0, 4), u"15/03/2010");
    hojas().UserColumnClick(cabeceras, 5);
    EXPECT_EQ(cabeceras.Cell(0, 4), u"01/12/2009");
}

TEST_F(Hojas, UnaHojaBuscadaPorSuNumeroQuedaALaVista) {
    datos();
    forms::runAction([] {
        hojas().Show();
        hojas().cmdVerListaHojas_Click();
    });
    escribirEn(hojas(), hojas().txtNumHoja, u"123456000002"_s);
    hojas().UserKey(key::F8);
    EXPECT_FALSE(hojas().lstCabecerasHoja.Visible());
    EXPECT_EQ(hojas().dtpCaptura.Text(), u"01/12/2009");
    // The list opened on its first row; what follows is of the sheet that is shown all the same.
    hojas().UserKey(key::F6);
    EXPECT_EQ(capturas().Caption(), u"Detalle Hoja de Campo nº 123456000002");
    EXPECT_EQ(capturas().lblTxtNumHoja.Caption(), u"123456000002");
    capturas().UserKey(key::F7);
    hojas().UserKey(key::F12);
    EXPECT_EQ(hojas().lblIdCabecera.Caption(), u"2");
    hojas().UserKey(key::F5);
    EXPECT_TRUE(hojas().lstCabecerasHoja.Visible());
}

TEST_F(Hojas, UnaHojaQueSeEscribeNoLaPisaOtra) {
    datos();
    forms::runAction([] { hojas().Show(); });
    hojas().UserSelectRow(hojas().lstCabecerasHoja, 0);
    hojas().UserKey(key::F6);
    forms::runAction([] { hojas().cmdNuevo_Click(); });
    escribirEn(hojas(), hojas().txtCampaña, u"paso"_s);
    hojas().UserKey(key::F12);
    EXPECT_EQ(hojas().txtCampaña.Text(), u"paso");
    capturas().UserClose();
    EXPECT_EQ(hojas().txtCampaña.Text(), u"paso");
    EXPECT_TRUE(hojas().EscribiendoHojaNueva());
    // Back on the list, a row can be opened for change again.
    hojas().UserKey(key::F5);
    hojas().UserSelectRow(hojas().lstCabecerasHoja, 1);
    hojas().UserKey(key::F12);
    EXPECT_EQ(hojas().lblIdCabecera.Caption(), u"2");
}

TEST_F(Hojas, LaCapturaDeUnaHojaSinDatosSeGrabaYNoHeredaLosDeOtra) {
    datos();
    sql(u"INSERT INTO ALMACEN VALUES (1, 'L', '1L', '00001', '00099', 99, '01/01/2010', 'A')"_s);
    sql(u"UPDATE ANICHO SET FechaCaptura=Null, CodLocalidad=Null WHERE IdCabecera=2"_s);
    sql(u"DELETE FROM ANIAHO WHERE IdCabecera=1 AND NumRegistro=2"_s);
    auto& pantalla = abrirLista();
    pantalla.UserSelectRow(lista(), 0);
    pantalla.UserKey(key::F5);
    EXPECT_EQ(pantalla.lblTxtFecha.Caption(), u"15/03/2010");
    pantalla.UserKey(key::F7);
    pantalla.UserSelectRow(lista(), 1);
    pantalla.UserKey(key::F12);
    EXPECT_EQ(pantalla.lblIdCabecera.Caption(), u"2");
    EXPECT_EQ(pantalla.lblTxtFecha.Caption(), QString());
    EXPECT_EQ(pantalla.lbltxtLocalidad.Caption(), QString());
    escribirEn(pantalla, pantalla.txtIniciales, u"on"_s);
    pantalla.UserKey(key::F3);
    EXPECT_EQ(host.textosDeCajas(), QString());
    EXPECT_EQ(filas(u"SELECT IniAnillador FROM ANIAHO WHERE IdCabecera=2"_s), u"ON");

    // Nor is a number needed to open it.
    pantalla.UserClose();
    sql(u"UPDATE ANICHO SET NumHoja=Null WHERE IdCabecera=2"_s);
    auto& otraVez = abrirLista();
    otraVez.UserDoubleClickRow(lista(), static_cast<int>(columna(38).split(u' ').indexOf(u"2"_s)));
    EXPECT_EQ(otraVez.lblIdCabecera.Caption(), u"2");
    EXPECT_EQ(otraVez.lblTxtAnilla.Caption(), u"1L.00002");
    EXPECT_EQ(host.textosDeCajas(), QString());
}

TEST_F(Hojas, EntreNumerosIgualesLaVueltaALaListaElijeLaCapturaDeSuHoja) {
    datos();
    auto& pantalla = abrirLista();
    pantalla.UserSelectRow(lista(), 2);
    pantalla.UserKey(key::F5);
    pantalla.UserKey(key::F5);
    EXPECT_EQ(lista().Selected(), 2);
    host.respuestas = {forms::box::AnswerYes};
    captura(2, 2, u"A"_s, u"1L.00003"_s);  // so that there is something to renumber
    pantalla.UserKey(key::F11);
    EXPECT_EQ(columna(38), u"1 1");
    EXPECT_EQ(filas(u"SELECT Anilla FROM ANIAHO WHERE IdCabecera=1 ORDER BY NumRegistro"_s),
              u"1L.00001|1L.00002");
}

TEST_F(Hojas, LasCapturasDeUnaFilaTomanFechaYLugarDeSuHojaYVuelvenAElla) {
    datos();
    forms::runAction([] { hojas().Show(); });
    hojas().UserSelectRow(hojas().lstCabecerasHoja, 1);
    hojas().UserKey(key::F6);
    EXPECT_EQ(capturas().Caption(), u"Detalle Hoja de Campo nº 123456000002");
    EXPECT_EQ(capturas().lblTxtFecha.Caption(), u"01/12/2009");
    EXPECT_EQ(capturas().lbltxtLocalidad.Caption(), u"Amurrio   Amurrio .-. 01002");
    EXPECT_EQ(columna(5), u"1L.00002");
    capturas().UserClose();
    EXPECT_EQ(hojas().lblIdCabecera.Caption(), u"2");
    EXPECT_EQ(hojas().dtpCaptura.Text(), u"01/12/2009");
    EXPECT_TRUE(hojas().cmdNuevo.Enabled());
}

TEST_F(Hojas, UnCambioQueNoSePuedeEscribirDejaLoTecleado) {
    datos();
    sql(u"INSERT INTO ALMACEN VALUES (1, 'L', '1L', '00001', '00099', 99, '01/01/2010', 'A')"_s);
    auto& pantalla = abrirLista();
    pantalla.UserSelectRow(lista(), 0);
    pantalla.UserKey(key::F12);
    escribirEn(pantalla, pantalla.txtIniciales, u"o'n"_s);
    pantalla.UserKey(key::F3);
    ASSERT_EQ(host.cajas.size(), 1u);
    EXPECT_EQ(host.cajas[0].title, u"¡ERROR al ejecutar SQL!");
    EXPECT_EQ(pantalla.txtIniciales.Text(), u"O'N");
    EXPECT_TRUE(gModificando);
    EXPECT_EQ(columna(20), QString(u"  "_s));
    pantalla.txtIniciales.SetText(u"ON"_s);
    pantalla.UserKey(key::F3);
    EXPECT_EQ(filas(u"SELECT IniAnillador FROM ANIAHO WHERE IdCabecera=1 AND NumRegistro=1"_s), u"ON");
}

TEST_F(Hojas, UnaHojaCuyaLocalidadNoEstaConservaSuCodigo) {
    datos();
    sql(u"UPDATE ANICHO SET CodLocalidad='99999' WHERE IdCabecera=1"_s);
    forms::runAction([] { hojas().Show(); });
    escribirEn(hojas(), hojas().txtNumHoja, u"123456000002"_s);
    hojas().UserKey(key::F8);
    EXPECT_EQ(hojas().dbcboLocalidad.Text(), u"Amurrio   Amurrio .-. 01002");
    forms::runAction([] {
        hojas().lblIdCabecera.SetCaption(u"1"_s);
        hojas().B_Buscar_Click();
    });
    EXPECT_EQ(hojas().dbcboLocalidad.Text(), QString());
    EXPECT_EQ(hojas().lblCodLocalidad.Caption(), u"99999");
}

TEST_F(Hojas, LosCamposVaciosNoHeredanLosDeLaHojaAnterior) {
    datos();
    sql(u"UPDATE ANICHO SET Campanna='otoño' WHERE IdCabecera=1"_s);
    forms::runAction([] { hojas().Show(); });
    hojas().UserDoubleClickRow(hojas().lstCabecerasHoja, 0);
    EXPECT_EQ(hojas().txtCampaña.Text(), u"otoño");
    hojas().UserKey(key::F5);
    hojas().UserDoubleClickRow(hojas().lstCabecerasHoja, 1);
    EXPECT_EQ(hojas().lblIdCabecera.Caption(), u"2");
    EXPECT_EQ(hojas().txtCampaña.Text(), QString());
}

}  // namespace
}  // namespace tarmel
