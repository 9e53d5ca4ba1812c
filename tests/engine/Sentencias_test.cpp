#include "engine/Banco.h"

/// The statements of clsClassMantenimientos.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;
using Campo = clsClassMantenimientos::Campo;

const QString todas = u"SELECT Id, Nombre, Peso FROM T ORDER BY Id"_s;

class Sentencias : public Banco {
 protected:
    Sentencias() {
        sql(u"CREATE TABLE T (Id INTEGER, Nombre VARCHAR(10), Peso DOUBLE, Activo BIT, CONSTRAINT K PRIMARY KEY (Id))"_s);
        m.NombreTabla(u"T"_s);
        m.Describir({Campo{.NombreCampo = u"Id"_s, .CampoClave = true, .TipoDatos = u"Numerico"_s},
                     Campo{.NombreCampo = u"Nombre"_s, .TipoDatos = u"Caracter"_s},
                     Campo{.NombreCampo = u"Peso"_s, .TipoDatos = u"Decimal"_s}});
    }
    void valores(const QString& id, const QString& nombre, const QString& peso) {
        m.campo(0).ValorCampo = id;
        m.campo(1).ValorCampo = nombre;
        m.campo(2).ValorCampo = peso;
    }
    bool insertar(const QString& id, const QString& nombre, const QString& peso) {
        valores(id, nombre, peso);
        return m.InsertarRegistro();
    }
    /// Exactly one box, of the kind that every failed statement shows.
    void esperaUnaCajaDeError(int numero) {
        ASSERT_EQ(host.cajas.size(), 1u);
        const forms::MessageBox& caja = host.cajas.front();
        EXPECT_EQ(caja.title, u"¡ERROR al ejecutar SQL!"_s);
        EXPECT_EQ(caja.buttons, 48);
        EXPECT_TRUE(caja.text.startsWith(u"Error nº: [%1] "_s.arg(numero))) << caja.text.toStdString();
        EXPECT_EQ(caja.text.count(u'\r'), 1);
        EXPECT_FALSE(caja.text.endsWith(u'\r')) << "the description is there";
        host.cajas.clear();
    }

    clsClassMantenimientos m;
};

TEST_F(Sentencias, LaRanuraDeMasQuedaVacia) {
    EXPECT_EQ(m.UBound(), 3);
    EXPECT_EQ(errorOf([this] { (void)m.campo(4); }), 9);
    EXPECT_EQ(errorOf([this] { (void)m.campo(-1); }), 9);
    m.Elementos(5);
    EXPECT_EQ(m.UBound(), 5);
    EXPECT_EQ(m.campo(0).NombreCampo, u""_s) << "old contents are not kept";
}

TEST_F(Sentencias, InsertarMandaTodoComoTexto) {
    EXPECT_TRUE(insertar(u"7"_s, u"Cárabo"_s, u"85,5"_s));
    EXPECT_TRUE(insertar(u"8"_s, u""_s, u""_s));
    EXPECT_TRUE(host.cajas.empty());
    EXPECT_EQ(filas(todas), u"7;Cárabo;85,5|8;;"_s);
    EXPECT_EQ(filas(u"SELECT Id FROM T WHERE Peso IS NULL AND Nombre=''"_s), u"8"_s);
}

TEST_F(Sentencias, UnFalloSeEnseñaYNoGuardaNada) {
    ASSERT_TRUE(insertar(u"7"_s, u"a"_s, u"1"_s));
    for (const auto& [id, nombre, peso] :
         {std::tuple(u"8"_s, u"O'Neill"_s, u"1"_s), std::tuple(u"7"_s, u"clave"_s, u"1"_s),
          std::tuple(u"8"_s, u"demasiado largo"_s, u"1"_s), std::tuple(u"8"_s, u"a"_s, u"x"_s)}) {
        EXPECT_FALSE(insertar(id, nombre, peso));
        esperaUnaCajaDeError(basic::error::Statement);
    }
    EXPECT_EQ(filas(todas), u"7;a;1"_s);
}

TEST_F(Sentencias, ModificarEscribeLaFilaDeLaClave) {
    insertar(u"7"_s, u"a"_s, u"1"_s);
    insertar(u"8"_s, u"b"_s, u"2"_s);
    valores(u"8"_s, u"c"_s, u""_s);
    EXPECT_TRUE(m.ModificarRegistro());
    EXPECT_EQ(filas(todas), u"7;a;1|8;c;"_s);
    m.campo(0).CampoClave = false;
    m.campo(1) = Campo{.NombreCampo = u"Nombre"_s, .ValorCampo = u"A"_s, .CampoClave = true};
    m.campo(0).ValorCampo = u"9"_s;
    EXPECT_TRUE(m.ModificarRegistro()) << "a key of text goes between quotes";
    EXPECT_EQ(filas(todas), u"8;c;|9;a;"_s);
}

TEST_F(Sentencias, ModificarConVariasClavesLasPideTodas) {
    insertar(u"7"_s, u"a"_s, u"1"_s);
    insertar(u"8"_s, u"a"_s, u"1"_s);
    m.campo(1).CampoClave = true;
    valores(u"7"_s, u"a"_s, u"3"_s);
    EXPECT_TRUE(m.ModificarRegistro());
    valores(u"8"_s, u"b"_s, u"4"_s);
    EXPECT_TRUE(m.ModificarRegistro());
    EXPECT_EQ(filas(todas), u"7;a;3|8;a;1"_s);
}

TEST_F(Sentencias, ModificarSinClaveEscribeTodasYSoloConClavesFalla) {
    insertar(u"7"_s, u"a"_s, u"1"_s);
    insertar(u"8"_s, u"b"_s, u"2"_s);
    m.Describir({Campo{.NombreCampo = u"Nombre"_s, .ValorCampo = u"z"_s}});
    EXPECT_TRUE(m.ModificarRegistro());
    EXPECT_EQ(filas(todas), u"7;z;1|8;z;2"_s);
    m.campo(0).CampoClave = true;
    EXPECT_FALSE(m.ModificarRegistro());
    esperaUnaCajaDeError(basic::error::Statement);
}

TEST_F(Sentencias, LaUltimaRanuraCuentaConUnSiOUnNo) {
    const QString conActivo = u"SELECT Id, Nombre, Peso, Activo FROM T"_s;
    insertar(u"7"_s, u"a"_s, u"1"_s);
    m.campo(3) = Campo{.NombreCampo = u"Activo"_s, .ValorCampo = u"Verdadero"_s};
    EXPECT_TRUE(m.ModificarRegistro());
    EXPECT_EQ(filas(conActivo), u"7;a;1;Verdadero"_s);
    m.campo(3).ValorCampo = u"quizá"_s;
    EXPECT_TRUE(m.ModificarRegistro());
    EXPECT_EQ(filas(conActivo), u"7;a;1;Verdadero"_s);
    m.campo(3).CampoClave = true;
    m.campo(3).ValorCampo = u"Falso"_s;
    EXPECT_TRUE(m.ModificarRegistro()) << "a No is written though the slot is a key";
    EXPECT_EQ(filas(conActivo), u"7;a;1;Falso"_s);
    m.campo(3).ValorCampo = u"Verdadero"_s;
    EXPECT_TRUE(m.ModificarRegistro());
    EXPECT_EQ(filas(conActivo), u"7;a;1;Falso"_s) << "a Yes is not";
}

TEST_F(Sentencias, EliminarSinClaveNoBorraNada) {
    insertar(u"7"_s, u"a"_s, u"1"_s);
    insertar(u"8"_s, u"b"_s, u"1"_s);
    EXPECT_TRUE(m.EliminarRegistro(true));
    EXPECT_EQ(filas(todas), u"7;a;1"_s);
    m.campo(0).CampoClave = false;
    EXPECT_FALSE(m.EliminarRegistro(true));
    esperaUnaCajaDeError(basic::error::Statement);
    EXPECT_EQ(filas(todas), u"7;a;1"_s);
}

TEST_F(Sentencias, EjecutarSQLDevuelveFilasONada) {
    insertar(u"7"_s, u"a"_s, u"1"_s);
    const std::optional<ado::Recordset> rs = m.EjecutarSQL(u"SELECT Id FROM T"_s);
    ASSERT_TRUE(rs);
    EXPECT_EQ(rs->RecordCount(), 1);
    const std::optional<ado::Recordset> orden = m.EjecutarSQL(u"DELETE FROM T"_s);
    ASSERT_TRUE(orden);
    EXPECT_FALSE(orden->IsOpen());
    EXPECT_FALSE(m.EjecutarSQL(u"SELECT Nada FROM T"_s));
    esperaUnaCajaDeError(basic::error::Statement);
    gConexion.Close();
    EXPECT_FALSE(m.EjecutarSQL(u"SELECT Id FROM T"_s));
    esperaUnaCajaDeError(basic::error::ConnectionClosed);
}

class Busqueda : public Sentencias {
 protected:
    Busqueda() {
        insertar(u"7"_s, u"007"_s, u"1,5"_s);
        insertar(u"8"_s, u"Búho"_s, u""_s);
        m.BorrarDatos();
    }
    QString datos() {
        return m.campo(0).ValorCampo + u';' + m.campo(1).ValorCampo + u';' + m.campo(2).ValorCampo;
    }
};

TEST_F(Busqueda, EncuentraPorParesDeValorYColumna) {
    EXPECT_TRUE(m.BuscarRegistro({{7, u"Id"_s}}));
    EXPECT_EQ(datos(), u"7;007;1,5"_s);
    EXPECT_TRUE(m.BuscarRegistro({{u" BÚHO "_s, u"Nombre"_s}, {u"8"_s, u"Id"_s}}));
    EXPECT_EQ(datos(), u"8;Búho;1,5"_s) << "a Null keeps what was there";
    m.BorrarDatos();
    EXPECT_TRUE(m.BuscarRegistro({{u"007"_s, u"Nombre"_s}}));
    EXPECT_FALSE(m.BuscarRegistro({{u"7"_s, u"Nombre"_s}})) << "between quotes it is text";
    EXPECT_EQ(datos(), u"7;007;1,5"_s) << "nothing found leaves the descriptors alone";
    m.campo(1).TipoDatos.clear();
    EXPECT_TRUE(m.BuscarRegistro({{u"7"_s, u"Nombre"_s}})) << "without quotes it is a number";
}

TEST_F(Busqueda, UnaColumnaSinDescriptorDejaLaCondicionAMedias) {
    EXPECT_EQ(errorOf([this] { (void)m.BuscarRegistro({{7, u"Activo"_s}}); }), basic::error::Statement);
    EXPECT_EQ(errorOf([this] {
                  (void)m.BuscarRegistro({{7, u"Id"_s}, {0, u"Activo"_s}});
              }),
              basic::error::Statement);
    EXPECT_FALSE(m.BuscarRegistro({{u"x"_s, u"Nombre"_s}, {u"Verdadero"_s, u"Activo"_s}}))
        << "a text needs no descriptor";
    EXPECT_TRUE(host.cajas.empty());
}

class FormularioDeCapturas : public forms::Form {
 public:
    FormularioDeCapturas() : Form(u"frm07_DetallesHojasCampo"_s) {}
    forms::Label lblIdCabecera{*this, u"lblIdCabecera"_s};
    forms::TextBox txtNumRegistro{*this, u"txtNumRegistro"_s};
};

class Renumeracion : public Sentencias {
 protected:
    Renumeracion() {
        forms::pantallas().Register(u"frm07_DetallesHojasCampo"_s,
                                    [] { return std::make_shared<FormularioDeCapturas>(); });
        sql(u"CREATE TABLE ANIAHO (IdCabecera INTEGER, NumRegistro INTEGER, Anilla VARCHAR(8), PRIMARY KEY (IdCabecera, NumRegistro))"_s);
        m.NombreTabla(u"ANIAHO"_s);
        m.Describir({Campo{.NombreCampo = u"IdCabecera"_s, .CampoClave = true, .TipoDatos = u"Numerico"_s},
                     Campo{.NombreCampo = u"NumRegistro"_s, .CampoClave = true, .TipoDatos = u"Numerico"_s},
                     Campo{.NombreCampo = u"Anilla"_s}});
        for (const int n : {1, 2, 3, 4}) {
            valores(u"5"_s, QString::number(n), u"A%1"_s.arg(n));
            m.InsertarRegistro();
        }
        valores(u"6"_s, u"1"_s, u"B1"_s);
        m.InsertarRegistro();
    }
    bool eliminar(const QString& hoja, const QString& numero, bool sinRenumerar) {
        valores(hoja, numero, u""_s);
        auto& capturas =
            static_cast<FormularioDeCapturas&>(forms::pantallas().Get(u"frm07_DetallesHojasCampo"_s));
        capturas.lblIdCabecera.SetCaption(hoja);
        capturas.txtNumRegistro.SetText(numero);
        return m.EliminarRegistro(sinRenumerar);
    }
    QString capturas() {
        return filas(u"SELECT IdCabecera, NumRegistro, Anilla FROM ANIAHO ORDER BY 1, 2"_s);
    }
};

TEST_F(Renumeracion, LasCapturasDeDetrasBajanUno) {
    EXPECT_TRUE(eliminar(u"5"_s, u"2"_s, false));
    EXPECT_EQ(capturas(), u"5;1;A1|5;2;A3|5;3;A4|6;1;B1"_s);
    EXPECT_TRUE(eliminar(u"5"_s, u"3"_s, false)) << "the last one needs no renumbering";
    EXPECT_EQ(capturas(), u"5;1;A1|5;2;A3|6;1;B1"_s);
    EXPECT_TRUE(host.cajas.empty());
}

TEST_F(Renumeracion, QuienNoLaPideDejaElHueco) {
    EXPECT_TRUE(eliminar(u"5"_s, u"2"_s, true));
    EXPECT_EQ(capturas(), u"5;1;A1|5;3;A3|5;4;A4|6;1;B1"_s);
}

TEST_F(Renumeracion, LaUnicaCapturaSeBorraYElErrorSeEnseña) {
    EXPECT_TRUE(eliminar(u"6"_s, u"1"_s, false));
    esperaUnaCajaDeError(basic::error::InvalidNull);
    EXPECT_EQ(capturas(), u"5;1;A1|5;2;A2|5;3;A3|5;4;A4"_s);
}

TEST_F(Renumeracion, UnFalloAMediasDejaLoHecho) {
    sql(u"DELETE FROM ANIAHO WHERE NumRegistro=2"_s);
    sql(u"UPDATE ANIAHO SET NumRegistro=6 WHERE NumRegistro=4"_s);
    sql(u"CREATE TABLE Numeros (Numero INTEGER PRIMARY KEY)"_s);
    for (const int n : {1, 2, 3, 6})
        sql(u"INSERT INTO Numeros VALUES (%1)"_s.arg(n));
    sql(u"ALTER TABLE ANIAHO ADD CONSTRAINT R FOREIGN KEY (NumRegistro) REFERENCES Numeros"_s);
    auto& pantalla =
        static_cast<FormularioDeCapturas&>(forms::pantallas().Get(u"frm07_DetallesHojasCampo"_s));
    pantalla.lblIdCabecera.SetCaption(u"5"_s);
    pantalla.txtNumRegistro.SetText(u"2"_s);
    EXPECT_EQ(errorOf([this] { m.RenumerarNumRegistro(); }), basic::error::Statement)
        << "there is no number 5";
    EXPECT_EQ(capturas(), u"5;1;A1|5;2;A3|5;6;A4|6;1;B1"_s);
}

TEST_F(Renumeracion, SinNumeroOSinHojaFalla) {
    auto& pantalla =
        static_cast<FormularioDeCapturas&>(forms::pantallas().Get(u"frm07_DetallesHojasCampo"_s));
    pantalla.lblIdCabecera.SetCaption(u"5"_s);
    EXPECT_EQ(errorOf([this] { m.RenumerarNumRegistro(); }), 13);
    pantalla.lblIdCabecera.SetCaption(u""_s);
    EXPECT_EQ(errorOf([this] { m.RenumerarNumRegistro(); }), basic::error::Statement);
}

}  // namespace
}  // namespace tarmel
