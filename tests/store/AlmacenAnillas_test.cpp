#include "store/AlmacenAnillas.h"

#include "core/Programa.h"
#include "store/frm15_AlmacenAnillas.h"

/// The journal of the store: what may be written into it, and what it answers.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

class Almacen : public Programa {
 protected:
    void SetUp() override { arrancarComo(u"123456"_s); }
    static void linea(int numMov, const QString& modelo, const QString& inscripcion, const QString& inicial,
                      const QString& final, const QString& tipo) {
        sql(u"INSERT INTO Almacen VALUES (%1, '%2', '%3', '%4', '%5', 1, '15/03/2010', '%6')"_s.arg(
            QString::number(numMov), modelo, inscripcion, inicial, final, tipo));
    }
    /// Received 100 to 200 of model L, inscription N; of these 100 to 150 given back.
    static void diario() {
        linea(1, u"L"_s, u"N"_s, u"000100"_s, u"000200"_s, u"A"_s);
        linea(2, u"L"_s, u"N"_s, u"100"_s, u"150"_s, u"D"_s);
        linea(3, u"L"_s, u"1N"_s, u"300"_s, u"399"_s, u"A"_s);
        linea(4, u"L"_s, u"1N"_s, u"350"_s, u"360"_s, u"T"_s);
        linea(5, u"L"_s, u"1N"_s, u"350"_s, u"360"_s, u"A"_s);
        linea(6, u"L"_s, u"2N"_s, u"500"_s, u"550"_s, u"D"_s);
        linea(7, u"V"_s, u"V"_s, u"900"_s, u"2000"_s, u"A"_s);
        linea(8, u"V"_s, u"V"_s, u"2001"_s, u"2100"_s, u"A"_s);
    }
};

TEST_F(Almacen, UnaAnillaEstaEnElAlmacen) {
    diario();
    struct Caso {
        QString modelo, inscripcion;
        qint32 numero;
        bool esta;
    };
    for (const Caso& caso :
         {Caso{u"L"_s, u"N"_s, 99, false},
          {u"L"_s, u"N"_s, 100, false},
          {u"L"_s, u"N"_s, 120, false},
          {u"L"_s, u"N"_s, 151, true},
          {u"L"_s, u"N"_s, 180, true},
          {u"L"_s, u"N"_s, 200, true},
          {u"L"_s, u"N"_s, 201, false},
          {u"L"_s, u"1N"_s, 349, true},
          {u"L"_s, u"1N"_s, 350, false},  // passed on and received again: out as long as that line stands
          {u"L"_s, u"2N"_s, 510, false},
          {u"L"_s, u""_s, 180, false},
          {u"V"_s, u"V"_s, 1000, true},
          {u"V"_s, u"V"_s, 2050, true},
          {u"V"_s, u"N"_s, 1000, false}}) {
        EXPECT_EQ(AnillaEnAlmacen(caso.modelo, caso.inscripcion, caso.numero), caso.esta)
            << caso.modelo.toStdString() << caso.inscripcion.toStdString() << caso.numero;
    }
    EXPECT_TRUE(host.cajas.empty());
}

TEST_F(Almacen, UnMovimientoComoEseYaEsta) {
    diario();
    struct Caso {
        QString inscripcion;
        qint32 inicial, final;
        QString tipo;
        bool puede;
    };
    for (const Caso& caso : {Caso{u"N"_s, 100, 200, u"A"_s, false},  // the same
                             {u"N"_s, 120, 130, u"A"_s, false},      // held by one
                             {u"N"_s, 120, 130, u"D"_s, false},
                             {u"N"_s, 100, 200, u"D"_s, true},      // holds one
                             {u"N"_s, 150, 250, u"A"_s, true},      // overlaps
                             {u"N"_s, 100, 150, u"T"_s, true},      // another type
                             {u"1L"_s, 100, 200, u"A"_s, true}}) {  // another inscription
        EXPECT_EQ(ComprobarMovimiento(u"L"_s, caso.inscripcion, caso.inicial, caso.final, caso.tipo),
                  caso.puede)
            << caso.inicial << "-" << caso.final << caso.tipo.toStdString();
        EXPECT_EQ(host.cajas.empty(), caso.puede);
        if (caso.puede) continue;
        EXPECT_EQ(host.cajas[0].buttons, forms::box::Exclamation);
        EXPECT_EQ(host.cajas[0].title, u"Almacén de anillas"_s);
        EXPECT_EQ(host.textosDeCajas(), u"El movimiento que pretende hacer ya está en el almacén"_s);
    }
}

TEST_F(Almacen, LoQueSeDevuelveHaDeEstarYSinPoner) {
    diario();
    sql(u"INSERT INTO ANICHO (IdCabecera, NumHoja) VALUES (1, 123456000001)"_s);
    for (const QString& valores : {u"1, 'A', 'L...1005', 'L1005'"_s, u"2, 'A', 'V...1005', 'V1005'"_s,
                                   u"3, 'R', 'V...1500', 'V1500'"_s})
        sql(u"INSERT INTO ANIAHO (IdCabecera, NumRegistro, TipoRegistro, Anilla, NumeroAnilla) VALUES (1, "_s +
            valores + u")"_s);
    struct Caso {
        QString modelo;
        qint32 inicial, final;
        QString mensajes;
    };
    const QString puesta = u"La anilla V...1005 ya está puesta"_s;
    for (const Caso& caso :
         {Caso{u"V"_s, 900, 999, {}},
          {u"V"_s, 1490, 1510, {}},  // a recovery puts no ring on
          {u"V"_s, 1000, 1010, puesta},
          {u"V"_s, 1005, 2100, puesta + u"|El rango 1005-2100 no está en el almacén"_s},
          {u"V"_s, 1990, 2010,
           u"El rango 1990-2010 no está en el almacén"_s},  // two lines together do not hold it
          {u"L"_s, 510, 520, {}},                           // a returned line of any inscription is enough
          {u"L"_s, 201, 201, u"El rango 201-201 no está en el almacén"_s},
          {u"V"_s, 1010, 1000, {}}}) {  // nothing to look through, and a line that holds both ends
        EXPECT_EQ(ComprobarDevolucion(caso.modelo, caso.inicial, caso.final), caso.mensajes.isEmpty());
        for (const forms::MessageBox& caja : host.cajas) {
            EXPECT_EQ(caja.buttons, forms::box::Exclamation);
            EXPECT_EQ(caja.title, u"Devolución - Traspaso anillas"_s);
        }
        EXPECT_EQ(host.textosDeCajas(), caso.mensajes) << caso.inicial << "-" << caso.final;
    }
}

// --- The screen

class PantallaAlmacen : public Almacen {
 protected:
    static frm15_AlmacenAnillas& pantalla() { return forms::pantallas().Get<frm15_AlmacenAnillas>(); }
    static void abrir() {
        forms::runAction([] { pantalla().Show(); });
    }
    static void anotar(const QString& modelo, const QString& inicial, const QString& final,
                       const QString& tipo) {
        auto& p = pantalla();
        p.UserClick(p.cmdNuevo);
        p.UserChoose(p.cboModelo, p.cboModelo.Find(modelo));
        p.UserChoose(p.cboInscripcion, 0);
        escribirEn(p, p.txtNumInicial, inicial);
        escribirEn(p, p.txtNumFinal, final);
        p.UserChoose(p.cboTipoMov, p.cboTipoMov.Find(tipo));
        p.UserClick(p.cmdAceptar);
    }
};

TEST_F(PantallaAlmacen, LaCantidadDependeDelCampoQueSeDeja) {
    abrir();
    auto& p = pantalla();
    p.UserClick(p.cmdNuevo);
    const QString aviso = u"El número inicial debe ser menor que el número final"_s;
    struct Caso {
        QString inicial, final;
        QString dejandoFinal,
            dejandoInicial;  ///< the quantity then; empty: the message, and the old quantity
    };
    for (const Caso& caso : {Caso{u"100"_s, u"200"_s, u"101"_s, u"100"_s},
                             {u"500"_s, u"500"_s, u"1"_s, {}},
                             {u"000010"_s, u"9"_s, {}, {}},
                             {u"0"_s, u"2147483647"_s, u"2147483648"_s, u"2147483647"_s}}) {
        for (const bool dejarFinal : {true, false}) {
            p.txtNumInicial.SetText(caso.inicial);
            p.txtNumFinal.SetText(caso.final);
            p.txtCantidad.SetText(u"?"_s);
            if (dejarFinal) p.txtNumFinal_LostFocus();
            if (!dejarFinal) p.txtNumInicial_LostFocus();
            const QString& cantidad = dejarFinal ? caso.dejandoFinal : caso.dejandoInicial;
            EXPECT_EQ(p.txtCantidad.Text(), cantidad.isEmpty() ? u"?"_s : cantidad)
                << caso.inicial.toStdString();
            EXPECT_EQ(host.textosDeCajas(), cantidad.isEmpty() ? aviso : QString());
        }
    }
    p.txtNumFinal.SetText(QString());
    p.txtNumInicial_LostFocus();
    EXPECT_TRUE(host.cajas.empty());
}

TEST_F(PantallaAlmacen, NoAdmiteUnNumeroDeMasDe32Bits) {
    abrir();
    auto& p = pantalla();
    p.UserClick(p.cmdNuevo);
    escribirEn(p, p.txtNumFinal, u"2147483648"_s);
    escribirEn(p, p.txtNumInicial, u"1"_s);
    EXPECT_TRUE(termina([&] { p.UserGoTo(p.cboTipoMov); }));
    EXPECT_TRUE(host.textosDeCajas().startsWith(u"Error nº 6\r"_s));
}

TEST_F(PantallaAlmacen, NumeraAnotaYBorra) {
    abrir();
    auto& p = pantalla();
    EXPECT_EQ(p.lstAlmacenAnillas.Count(), 0);
    EXPECT_EQ(p.lstAlmacenAnillas.Selected(), -1);
    anotar(u"V"_s, u"000100"_s, u"200"_s, u"A"_s);
    EXPECT_EQ(host.textosDeCajas(), QString());
    EXPECT_EQ(filas(u"SELECT * FROM ALMACEN"_s),
              u"1;V;V;000100;200;101;"_s + basic::CStr(basic::Date::today()) + u";A"_s);
    EXPECT_EQ(p.lstAlmacenAnillas.Cell(0, 0), u"1"_s) << "added bare, padded when it is loaded";
    EXPECT_EQ(p.lstAlmacenAnillas.Cell(0, 7), u"Anillas recibidas"_s);
    EXPECT_TRUE(p.lstAlmacenAnillas.Visible() && !p.frmNuevoMovimiento.Visible());
    EXPECT_EQ(host.punteros.back(), forms::Pointer::Default);

    p.BuscarMovimientos();
    EXPECT_EQ(p.lstAlmacenAnillas.Cell(0, 0), u"       1"_s);
    anotar(u"V"_s, u"100"_s, u"150"_s, u"D"_s);
    ASSERT_EQ(p.lstAlmacenAnillas.Count(), 2);

    host.respuestas = {forms::box::AnswerNo, forms::box::AnswerYes, forms::box::AnswerYes};
    for (const int quedan : {2, 1, 0}) {
        p.UserSelectRow(p.lstAlmacenAnillas, p.lstAlmacenAnillas.Count() - 1);
        p.UserClick(p.cmdEliminar);
        EXPECT_EQ(p.lstAlmacenAnillas.Count(), quedan);
        EXPECT_EQ(filas(u"SELECT Count(*) FROM ALMACEN"_s), QString::number(quedan));
        EXPECT_EQ(host.cajas.back().buttons,
                  forms::box::YesNo + forms::box::Critical + forms::box::DefaultButton2);
    }
}

TEST_F(PantallaAlmacen, ElNumeroDeMovimientoEsDe16Bits) {
    linea(32767, u"V"_s, u"V"_s, u"1"_s, u"2"_s, u"A"_s);
    abrir();
    EXPECT_TRUE(termina([] { anotar(u"V"_s, u"10"_s, u"20"_s, u"A"_s); }));
    EXPECT_TRUE(host.textosDeCajas().startsWith(u"Error nº 6\r"_s));
    EXPECT_EQ(filas(u"SELECT Count(*) FROM ALMACEN"_s), u"1"_s);
}

TEST_F(PantallaAlmacen, LaSerieSeBuscaComoTexto) {
    diario();
    abrir();
    auto& p = pantalla();
    struct Caso {
        QString serie;
        QString movimientos;
    };
    for (const Caso& caso : {Caso{u"1000"_s, u"2"_s},    // not 900 to 2000, but 100 to 150
                             {u"120"_s, u"2"_s},         // not the range 000100 to 000200
                             {u"35"_s, u"3"_s},          // 350 to 360 begins behind it
                             {u" 0355 "_s, u"3,4,5"_s},  // the leading zero is lost
                             {u"2050x"_s, u"8"_s},
                             {u"x"_s, {}}}) {
        p.txtSerie.SetText(caso.serie);
        p.UserClick(p.B_Buscar);
        QStringList movimientos;
        for (int fila = 0; fila < p.lstAlmacenAnillas.Count(); ++fila)
            movimientos << basic::Trim(p.lstAlmacenAnillas.Cell(fila, 0));
        movimientos.sort();
        EXPECT_EQ(movimientos.join(u','), caso.movimientos) << caso.serie.toStdString();
    }
    p.UserClick(p.cmdBorrar);
    EXPECT_EQ(p.lstAlmacenAnillas.Count(), 8);
}

TEST_F(PantallaAlmacen, SePuedeCerrarMientrasSeLlena) {
    diario();
    int veces = 0;
    host.alCederEventos = [&] {
        if (++veces == 2) forms::pantallas().Unload(frm15_AlmacenAnillas::kName);
    };
    abrir();
    EXPECT_EQ(veces, 2) << "the fill stops";
    EXPECT_EQ(forms::pantallas().Loaded(frm15_AlmacenAnillas::kName), nullptr);
}

TEST_F(PantallaAlmacen, UnaListaQueNoSePuedeLeerCierraLaPantalla) {
    sql(u"ALTER TABLE ALMACEN DROP CONSTRAINT MOVIMIENTOSALMACEN"_s);
    sql(u"DROP TABLE MOVIMIENTOS"_s);
    abrir();
    EXPECT_EQ(forms::pantallas().Loaded(frm15_AlmacenAnillas::kName), nullptr);
    EXPECT_TRUE(host.cajas.empty());
}

}  // namespace
}  // namespace tarmel
