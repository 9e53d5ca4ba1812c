#include "sheets/Anillas.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

#include "core/DefinicionesGlobales.h"
#include "engine/clsClassMantenimientos.h"
#include "platform/basic/Digits.h"
#include "platform/basic/Text.h"
#include "platform/forms/Host.h"

namespace tarmel {

using namespace Qt::StringLiterals;
using basic::RuntimeError;
namespace box = forms::box;

namespace {

/// Length of a normalised ring, and the character that fills it up.
constexpr int kLongitud = 8;
constexpr QChar kRelleno = u'.';

bool esLetra(QChar c) {
    return c >= u'A' && c <= u'Z';
}

/// What the rules ask of a ring's shape. Positions count from 1; 0 means that there is no letter.
struct Forma {
    int primeraLetra = 0;
    int ultimaLetra = 0;
    int cifras = 0;
    int letras = 0;
};

Forma formaDe(const QString& anilla) {
    // No ring bears more than this; what lies behind counts as neither letter nor digit.
    constexpr qsizetype examinados = 10;
    Forma forma;
    for (int i = 1; i <= std::min(anilla.size(), examinados); ++i) {
        const QChar c = anilla[i - 1];
        if (basic::isDigit(c)) ++forma.cifras;
        if (!esLetra(c)) continue;
        ++forma.letras;
        if (forma.primeraLetra == 0) forma.primeraLetra = i;
        forma.ultimaLetra = i;
    }
    return forma;
}

void avisarTodoLetras() {
    forms::MsgBox(u"No pueden ser todo letras"_s, box::OK | box::Critical, u"Error"_s);
}

/// Fills up to eight characters: dots stand behind the last letter, or in front where digits or a letter end
/// the ring.
QString rellenar(const QString& anilla) {
    const Forma forma = formaDe(anilla);
    const QString puntos(std::max<qsizetype>(0, kLongitud - anilla.size()), kRelleno);
    if (forma.cifras == anilla.size()) return puntos + anilla;
    if (forma.letras == anilla.size()) {
        avisarTodoLetras();
        return {};
    }
    if (forma.ultimaLetra == anilla.size()) return puntos + anilla;
    return anilla.left(forma.ultimaLetra) + puntos + anilla.mid(forma.ultimaLetra);
}

/// Does the filled-up text look like a ring at all? What stands between its ends is for the split to judge.
bool aceptable(const QString& rellena) {
    if (rellena.isEmpty()) return false;
    const QChar primero = rellena.front();
    if (esLetra(primero) || basic::isDigit(primero)) return true;
    if (primero != kRelleno || rellena.size() < kLongitud) return false;
    const QChar octavo = rellena[kLongitud - 1];
    return esLetra(octavo) || basic::isDigit(octavo);
}

/// A kind of ring: how its normalised form begins, and what that says. "?" stands for the ring's own first
/// character, "??" for its first two.
struct Patron {
    QStringView comienzo;  ///< three places: a character, or a set of characters and ranges in brackets
    QStringView modelo;
    QStringView inscripcion;
    int cifras;  ///< how many characters at the ring's end are its number
};

/// The first pattern that fits decides: L..12345 is a ring of five digits, L.123456 one of six.
constexpr std::array kPatrones = {
    Patron{u"[A-Y]..", u"?", u"?", 5},       Patron{u"[A-Z][A-Z].", u"0", u"??", 4},
    Patron{u"[LKPTV].[0-9]", u"?", u"?", 6}, Patron{u"N.[0-9]", u"L", u"N", 6},
    Patron{u"[1-3][NL].", u"L", u"??", 5},   Patron{u"..[0-9]", u"0", u"0", 6},
    Patron{u".10", u"10", u"10", 5},         Patron{u".11", u"11", u"11", 5},
    Patron{u"1V[0-9]", u"1V", u"1V", 6},     Patron{u".2[0-9]", u"2", u"2", 6},
    Patron{u"2A[0-9]", u"2", u"2A", 6},      Patron{u".3[0-9]", u"3", u"3", 6},
    Patron{u".4[0-9]", u"4", u"4", 6},       Patron{u".5[0-9]", u"5", u"5", 6},
    Patron{u".6[0-9]", u"6", u"6", 6},       Patron{u".7[0-9]", u"7", u"7", 6},
    Patron{u".8[0-9]", u"8", u"8", 6},       Patron{u".9[0-9]", u"9", u"9", 6},
    Patron{u"3M[0-9]", u"3M", u"3M", 6},
};

/// Does the character belong to a set such as "A-Y" or "LKPTV"?
bool pertenece(QChar c, QStringView conjunto) {
    while (!conjunto.isEmpty()) {
        const bool rango = conjunto.size() >= 3 && conjunto[1] == u'-';
        const QChar desde = conjunto[0];
        const QChar hasta = rango ? conjunto[2] : desde;
        if (c >= desde && c <= hasta) return true;
        conjunto = conjunto.sliced(rango ? 3 : 1);
    }
    return false;
}

bool empiezaComo(QStringView anilla, QStringView comienzo) {
    while (!comienzo.isEmpty()) {
        if (anilla.isEmpty()) return false;
        const bool conjunto = comienzo.front() == u'[';
        const qsizetype fin = conjunto ? comienzo.indexOf(u']') : 0;
        const QStringView admitidos = conjunto ? comienzo.sliced(1, fin - 1) : comienzo.first(1);
        if (!pertenece(anilla.front(), admitidos)) return false;
        comienzo = comienzo.sliced(fin + 1);
        anilla = anilla.sliced(1);
    }
    return true;
}

QString resolver(QStringView dato, const QString& anilla) {
    return dato.startsWith(u'?') ? anilla.left(dato.size()) : dato.toString();
}

/// The number in a piece of a ring: "." only groups digits; a letter is an error, also an "E", which would
/// begin an exponent elsewhere.
qint32 aNumero(const QString& texto) {
    if (std::any_of(texto.begin(), texto.end(), [](QChar c) { return c.isLetter(); }))
        throw RuntimeError(basic::error::TypeMismatch);
    return basic::CLng(texto);
}

/// The number that follows, in plain digits. What cannot be read, or is the greatest number, stays as it is.
QString siguienteNumero(const QString& texto) {
    QString siguiente = texto;
    basic::resumeNext([&] {
        const qint64 numero = qint64{aNumero(texto)} + 1;
        if (numero > std::numeric_limits<qint32>::max()) throw RuntimeError(basic::error::Overflow);
        siguiente = basic::CStr(numero);
    });
    return siguiente;
}

QString conCeros(const QString& numero, qsizetype longitud) {
    return numero.rightJustified(longitud, u'0');
}

/// Steps the tail behind the last letter. In a tail with dots, the number stands in `fuente` behind the
/// tail's last dot.
QString siguienteCola(const QString& cola, const QString& fuente, int ultimaLetra) {
    if (cola.startsWith(u'0')) return conCeros(siguienteNumero(cola), cola.size());
    if (!cola.startsWith(kRelleno)) return siguienteNumero(cola);
    const int puntos = basic::InStrRev(cola, QString(kRelleno));
    QString resultado = siguienteNumero(fuente.mid(puntos));
    for (int i = 0; i < puntos && resultado.size() + ultimaLetra < kLongitud; ++i)
        resultado.prepend(kRelleno);
    return resultado;
}

}  // namespace

QString NormalizarAnilla(QString& anilla) {
    anilla = rellenar(anilla);
    return aceptable(anilla) ? anilla : QString();
}

void DescomponerAnilla(const QString& anilla, QString& modelo, QString& inscripcion, qint32& numero,
                       bool& error) {
    const bool completo = basic::resumeNext([&] {
        const auto patron = std::find_if(kPatrones.begin(), kPatrones.end(),
                                         [&](const Patron& p) { return empiezaComo(anilla, p.comienzo); });
        if (patron == kPatrones.end()) return;
        modelo = resolver(patron->modelo, anilla);
        inscripcion = resolver(patron->inscripcion, anilla);
        numero = aNumero(anilla.right(patron->cifras));
    });
    const bool vacio = inscripcion.isEmpty() && modelo.isEmpty() && numero == 0;
    if (completo && !vacio) return;
    forms::MsgBox(
        u"El número de anilla es incorrecto. Ponga todos los dígitos que aparecen en la anilla "
        u"(incluidos los ceros)"_s,
        box::OK | box::Critical, u"Error en el número de anilla"_s);
    error = true;
}

QString SiguienteAnilla(QString& anilla) {
    const Forma forma = formaDe(anilla);
    const qsizetype longitud = anilla.size();
    if (forma.cifras == longitud) {
        anilla = conCeros(siguienteNumero(anilla), forma.cifras);
    } else if (forma.letras == longitud) {
        avisarTodoLetras();
        anilla.clear();
    } else if (forma.ultimaLetra != longitud) {
        const QString cola = anilla.mid(forma.ultimaLetra);
        // With a single letter the number is looked for in the whole ring, not in the tail.
        const QString fuente = forma.primeraLetra == forma.ultimaLetra ? anilla : cola;
        anilla = anilla.left(forma.ultimaLetra) + siguienteCola(cola, fuente, forma.ultimaLetra);
    } else {
        // Letters at the end: two of them stay, however many there are, and a single one if there is only
        // one.
        const int finales = forma.primeraLetra == forma.ultimaLetra ? 1 : 2;
        const QString delante = anilla.left(forma.primeraLetra - 1);
        anilla = conCeros(siguienteNumero(delante), forma.cifras) + anilla.right(finales);
    }
    return anilla;
}

basic::Variant SiguienteNumHoja(const basic::Variant& codAnillador, const basic::Variant& prefijo) {
    constexpr int cifras = 6;
    constexpr qint64 sinNumerar = -1;

    std::optional<ado::Recordset> filas = gMantenimientos.EjecutarSQL(
        u"SELECT Max(NumHoja) AS NumeroMayor FROM ANICHO WHERE CodAnillador = "_s + codAnillador.joined());
    if (!filas) throw RuntimeError(basic::error::ObjectNotSet);

    const QString codigo = prefijo.joined();
    const basic::Variant mayor = filas->Value(u"NumeroMayor"_s);
    const bool hayHojas = basic::testsDifferent(mayor, sinNumerar);
    const QString ultima = hayHojas ? mayor.joined() : codigo + u'0';
    const double siguiente = basic::Val(ultima.mid(codigo.size())) + 1;
    return codigo + basic::Right(u"000000"_s + basic::CStr(siguiente), cifras);
}

}  // namespace tarmel
