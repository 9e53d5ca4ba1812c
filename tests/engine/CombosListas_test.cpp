#include "engine/Banco.h"
#include "engine/CargarListaGenerica.h"
#include "engine/FuncionesCombo.h"
#include "engine/clsclassTratamientoErr.h"

namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

struct ParteRow {
    QString separador, texto;
    bool derecha;
    QString parte;
};

class Parte : public testing::TestWithParam<ParteRow> {};

TEST_P(Parte, SeCortaContandoLosBlancos) {
    EXPECT_EQ(ExtraerParteCombo(GetParam().separador, GetParam().texto, GetParam().derecha),
              GetParam().parte);
}

INSTANTIATE_TEST_SUITE_P(Filas, Parte,
                         testing::Values(ParteRow{u".-."_s, u"41 .-. Sevilla"_s, false, u"41"_s},
                                         ParteRow{u".-."_s, u"41 .-. Sevilla"_s, true, u"Sevilla"_s},
                                         ParteRow{u".-."_s, u"41 .-. "_s, true, u""_s},
                                         ParteRow{u".-."_s, u" .-. Sevilla"_s, false, u""_s},
                                         ParteRow{u".-."_s, u"a .-. b .-. c"_s, true, u"b .-. c"_s},
                                         ParteRow{u".-."_s, u"Sevilla"_s, true, u"illa"_s},
                                         ParteRow{u".-."_s, u""_s, true, u""_s},
                                         ParteRow{u" .-. "_s, u"412 .-. Sevilla"_s, false, u"41"_s},
                                         ParteRow{u""_s, u"41 .-. Sevilla"_s, false, u""_s}));

TEST(Parte, SinSeparadorNoHayParteIzquierda) {
    EXPECT_EQ(errorOf([] { (void)ExtraerParteCombo(u".-."_s, u"Sevilla"_s, false); }), 5);
    EXPECT_EQ(errorOf([] { (void)ExtraerParteCombo(u".-."_s, u".-. Sevilla"_s, false); }), 5);
}

class Combos : public Banco {
 protected:
    Combos() {
        sql(u"CREATE TABLE C (Codigo VARCHAR(5), Nombre VARCHAR(20), Dato INTEGER)"_s);
        sql(u"INSERT INTO C VALUES (' B ', ' Beta', 7)"_s);
        sql(u"INSERT INTO C VALUES ('A', NULL, 8)"_s);
    }
    static QString elementos(const forms::ComboBox& combo) {
        QStringList textos;
        for (int i = 0; i < combo.ListCount(); ++i)
            textos << combo.List(i);
        return textos.join(u'|');
    }
    forms::ComboBox& combo = formulario.cboEdad;
};

TEST_F(Combos, SeLlenanEnElOrdenDeLaSentencia) {
    LlenarCombo(combo, gConexion, u"SELECT * FROM C"_s, u"Codigo"_s, u"Nombre"_s, false, u"Dato"_s);
    EXPECT_EQ(elementos(combo), u"B .-. Beta|A .-. "_s);
    EXPECT_EQ(combo.ItemData(1), 8);
    LlenarCombo(combo, gConexion, u"SELECT * FROM C ORDER BY Dato DESC"_s, u"Nombre"_s, u""_s, true,
                u"Dato"_s);
    EXPECT_EQ(elementos(combo), u"B .-. Beta|A .-. ||Beta"_s);
    EXPECT_EQ(combo.ItemData(3), 0) << "only items with a name take the number";
    LlenarCombo(combo, gConexion, u"SELECT * FROM C WHERE Codigo='A'"_s, u"Codigo"_s, u"Nombre"_s);
    EXPECT_EQ(elementos(combo), u"A .-. "_s);
}

TEST_F(Combos, LosErroresLleganAQuienLlena) {
    EXPECT_EQ(errorOf([this] { LlenarCombo(combo, gConexion, u"SELECT * FROM Nada"_s, u"a"_s, u"b"_s); }),
              basic::error::Statement);
    EXPECT_EQ(errorOf([this] { LlenarCombo(combo, gConexion, u"SELECT * FROM C"_s, u"Codigo"_s, u"x"_s); }),
              basic::error::ItemNotFound);
}

TEST_F(Combos, SeSeleccionaPorElPrincipio) {
    for (const QString& texto : {u"Ébano"_s, u"ébola"_s, u"Zorzal"_s})
        combo.AddItem(texto);
    int clics = 0;
    combo.Click = [&clics] { ++clics; };
    SeleccionarEnCombo(combo, u"éBO"_s);
    EXPECT_EQ(combo.ListIndex(), 1);
    SeleccionarEnCombo(combo, u"-1"_s);
    EXPECT_EQ(combo.ListIndex(), -1);
    EXPECT_EQ(clics, 2);
}

TEST_F(Combos, CopiarDejaAmbosSinSeleccion) {
    combo.AddItem(u"a"_s);
    combo.AddItem(u"b"_s);
    combo.SetListIndex(1);
    formulario.cboSimple.AddItem(u"z"_s);
    CopiarCombo(combo, formulario.cboSimple);
    EXPECT_EQ(elementos(formulario.cboSimple), u"z|a|b"_s);
    EXPECT_EQ(combo.ListIndex() + formulario.cboSimple.ListIndex(), -2);
}

TEST_F(Combos, ElDeDatosSeEnlazaYSeBusca) {
    forms::DataCombo& especies = formulario.dbcboEspecie;
    sql(u"UPDATE C SET Nombre='Bubo' WHERE Codigo='A'"_s);
    EnlazarDataCombo(especies, gConexion, u"SELECT Nombre, Dato FROM C ORDER BY Dato"_s, u"Nombre"_s,
                     u"Dato"_s);
    SeleccionarEnDataCombo(especies, u"bub"_s);
    EXPECT_EQ(especies.BoundText(), u"8"_s);
    SeleccionarEnDataCombo(especies, u""_s);
    EXPECT_EQ(especies.BoundText(), u"8"_s) << "no key, no search";
    especies.SetText(u"Otra especie"_s);
    SeleccionarEnDataCombo(especies, u"bubx"_s);
    EXPECT_EQ(especies.Text(), u""_s);
    EXPECT_EQ(especies.BoundText(), u""_s);
}

class Listas : public Banco {
 protected:
    Listas() {
        sql(u"CREATE TABLE L (Numero INTEGER, Nombre VARCHAR(20), Fecha DATE)"_s);
        sql(u"INSERT INTO L VALUES (5, ' uno ', '15/03/2010')"_s);
        sql(u"INSERT INTO L VALUES (12345678, NULL, NULL)"_s);
        sql(u"INSERT INTO L VALUES (12, 'tres', '16/03/2010')"_s);
    }
    int cargar(OpcionesLista opciones = {.anchoRelleno = 7}, const QString& consulta = u"SELECT * FROM L"_s) {
        return CargarListaGenerica(formulario, lista, gConexion, consulta,
                                   {{u"Número"_s, 900, u"Numero"_s},
                                    {u"Nombre"_s, 0, u"nombre"_s},
                                    {u"Date captura"_s, 1200, u"Fecha"_s}},
                                   opciones, seguir);
    }
    QString contenido() const {
        QStringList lineas;
        for (int i = 0; i < lista.Count(); ++i)
            lineas << lista.Cell(i, 0) + u';' + lista.Cell(i, 1) + u';' + lista.Cell(i, 2);
        return lineas.join(u'|');
    }
    forms::ListView& lista = formulario.lista;
    bool seguir = false;
};

TEST_F(Listas, SeLlenanConCabecerasYFilas) {
    lista.AddColumn(u"vieja"_s, 1);
    EXPECT_EQ(cargar(), 3);
    EXPECT_EQ(contenido(), u"      5;uno;15/03/2010|12345678;;|     12;tres;16/03/2010"_s);
    EXPECT_EQ(lista.ColumnCount(), 3);
    EXPECT_EQ(lista.ColumnAt(0).title, u"Número"_s);
    EXPECT_EQ(lista.ColumnAt(1).width, 0);
    EXPECT_EQ(lista.ColumnAt(2).tag, u"Date"_s);
    EXPECT_EQ(lista.ColumnAt(0).tag, u""_s);
    EXPECT_EQ(lista.Selected(), 0);
    EXPECT_TRUE(seguir);
    EXPECT_EQ(cargar({.anchoRelleno = 0, .marcarFechas = false}), 3);
    EXPECT_EQ(lista.Cell(0, 0), u"5"_s);
    EXPECT_EQ(lista.ColumnAt(2).tag, u""_s);
}

TEST_F(Listas, SinFilasNoHaySeleccion) {
    EXPECT_EQ(cargar(), 3);
    EXPECT_EQ(cargar({}, u"SELECT * FROM L WHERE Numero=0"_s), 0);
    EXPECT_EQ(lista.Count(), 0);
    EXPECT_EQ(lista.Selected(), -1);
    EXPECT_TRUE(seguir);
}

TEST_F(Listas, UnFalloDaMenosUnoYCalla) {
    EXPECT_EQ(cargar({}, u"SELECT * FROM Nada"_s), -1);
    EXPECT_FALSE(seguir);
    EXPECT_EQ(cargar({}, u"SELECT Numero FROM L"_s), -1) << "a column that the rows lack";
    EXPECT_TRUE(host.cajas.empty());
}

TEST_F(Listas, ElUsuarioPuedePararla) {
    host.alCederEventos = [this] { seguir = lista.Count() < 2; };
    EXPECT_EQ(cargar(), 2);
    EXPECT_EQ(lista.Count(), 2);
    EXPECT_EQ(lista.Selected(), -1) << "a stopped list selects nothing";
}

TEST_F(Listas, LlenarlaDeNuevoMientrasSeLlenaNoRepiteFilas) {
    bool otraVez = true;
    host.alCederEventos = [&] {
        if (!std::exchange(otraVez, false)) return;
        EXPECT_EQ(cargar(), 3);
    };
    EXPECT_EQ(cargar(), 1);
    EXPECT_EQ(lista.Count(), 3);
}

TEST_F(Listas, LoQueSeGrabaMientrasNoLaEstorba) {
    host.alCederEventos = [this] { sql(u"DELETE FROM L"_s); };
    EXPECT_EQ(cargar(), 3);
    EXPECT_EQ(filas(u"SELECT COUNT(*) FROM L"_s), u"0"_s);
}

class Errores : public Banco {
 protected:
    clsclassTratamientoErr tratamiento;
    void ponerFilas() {
        sql(u"CREATE TABLE E (CodigoError INTEGER, DescCorta VARCHAR(20))"_s);
        sql(u"INSERT INTO E VALUES (1, 'Uno')"_s);
        sql(u"INSERT INTO E VALUES (5, 'Cinco')"_s);
        abrir();
    }
    void abrir() { tratamiento.Errores().Open(u"SELECT * FROM E"_s, gConexion); }
};

TEST_F(Errores, SinFilasLaCajaSaleVacia) {
    host.respuestas = {2};
    EXPECT_EQ(tratamiento.MostrarError(5, 2, u"x"_s), 2);
    ASSERT_EQ(host.cajas.size(), 1u);
    EXPECT_EQ(host.cajas[0].buttons, 49);
    EXPECT_EQ(host.cajas[0].title, u"Error en la aplicación"_s);
    EXPECT_EQ(host.textosDeCajas(), u""_s);
}

TEST_F(Errores, ConFilasDiceLoQueSabe) {
    ponerFilas();
    tratamiento.MostrarError(5, 1, u"detalle"_s);
    EXPECT_EQ(host.cajas.back().buttons, 48);
    EXPECT_FALSE(tratamiento.Errores().IsOpen());
    abrir();
    tratamiento.MostrarError(3709, 1, u""_s);
    abrir();
    tratamiento.MostrarError(-7, 1, u""_s);
    abrir();
    tratamiento.MostrarError(8, 1, u""_s);
    EXPECT_EQ(host.textosDeCajas(),
              u"Cinco\rdetalle|Error de conexión|Error de conexión|Error: 8 \rError no definido"_s);
}

TEST_F(Errores, PreguntaAntesDeBorrar) {
    host.respuestas = {1, 2};
    EXPECT_EQ(tratamiento.PreguntaBorrar(u"7"_s, u"Ana"_s, 1, u"Título"_s), 1);
    EXPECT_EQ(tratamiento.PreguntaBorrar(u"7"_s, u"Ana"_s, 2, u"Título"_s), 2);
    tratamiento.PreguntaBorrar(u"7"_s, u"Ana"_s, 3, u"Título"_s);
    EXPECT_EQ(host.cajas[0].buttons, 273);
    EXPECT_EQ(host.cajas[1].buttons, 257);
    EXPECT_EQ(host.cajas[2].buttons, 0);
    EXPECT_EQ(host.cajas[0].title, u"Título"_s);
    EXPECT_EQ(host.cajas[0].text,
              u"Atención eliminará el registro:\r\rCódigo:  7\rNombre: Ana\r\r¿Desea continuar?"_s);
}

}  // namespace
}  // namespace tarmel
