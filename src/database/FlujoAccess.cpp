#include "database/FlujoAccess.h"

#include <QSet>
#include <QStringDecoder>
#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <optional>

namespace tarmel {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t kMaxTablas = 32768;
constexpr std::size_t kMaxColumnas = 255;
constexpr qsizetype kMaxNombre = 256;
constexpr int kMaxCifras = 28;
constexpr qsizetype kBytesIdentidad = 16;

struct NombreDeTipo {
    const char* nombre;
    TipoAccess tipo;
    ValorAccess::Clase clase;
};

constexpr std::array kTipos = {
    NombreDeTipo{"bool", TipoAccess::Bool, ValorAccess::Clase::Entero},
    NombreDeTipo{"byte", TipoAccess::Byte, ValorAccess::Clase::Entero},
    NombreDeTipo{"int", TipoAccess::Int, ValorAccess::Clase::Entero},
    NombreDeTipo{"long", TipoAccess::Long, ValorAccess::Clase::Entero},
    NombreDeTipo{"money", TipoAccess::Money, ValorAccess::Clase::Decimal},
    NombreDeTipo{"single", TipoAccess::Single, ValorAccess::Clase::Decimal},
    NombreDeTipo{"double", TipoAccess::Double, ValorAccess::Clase::Doble},
    NombreDeTipo{"date", TipoAccess::Date, ValorAccess::Clase::Doble},
    NombreDeTipo{"binary", TipoAccess::Binary, ValorAccess::Clase::Bytes},
    NombreDeTipo{"text", TipoAccess::Text, ValorAccess::Clase::Texto},
    NombreDeTipo{"ole", TipoAccess::Ole, ValorAccess::Clase::Bytes},
    NombreDeTipo{"memo", TipoAccess::Memo, ValorAccess::Clase::Texto},
    NombreDeTipo{"guid", TipoAccess::Guid, ValorAccess::Clase::Bytes},
    NombreDeTipo{"numeric", TipoAccess::Numeric, ValorAccess::Clase::Decimal},
};

ValorAccess::Clase claseDe(TipoAccess tipo) {
    return std::ranges::find(kTipos, tipo, &NombreDeTipo::tipo)->clase;
}

template <typename Numero>
std::optional<Numero> leerNumero(QByteArrayView texto, int base = 10) {
    Numero numero{};
    const auto leido = std::from_chars(texto.begin(), texto.end(), numero, base);
    if (texto.isEmpty() || leido.ec != std::errc() || leido.ptr != texto.end()) return std::nullopt;
    return numero;
}

bool esCifra(char c) {
    return c >= '0' && c <= '9';
}

/// -123.45: at least a digit on either side of a point.
bool esDecimal(QByteArrayView texto) {
    if (texto.startsWith('-')) texto = texto.sliced(1);
    const qsizetype punto = texto.indexOf('.');
    const QByteArrayView entera = punto < 0 ? texto : texto.first(punto);
    const QByteArrayView decimales = punto < 0 ? QByteArrayView("0") : texto.sliced(punto + 1);
    return !entera.isEmpty() && !decimales.isEmpty() && std::ranges::all_of(entera, esCifra) &&
           std::ranges::all_of(decimales, esCifra);
}

int valorDeCifra(char c) {
    if (esCifra(c)) return c - '0';
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

struct Margen {
    qint64 desde, hasta;
};

Margen margenDe(TipoAccess tipo) {
    switch (tipo) {
        case TipoAccess::Bool:
            return {-1, 0};
        case TipoAccess::Byte:
            return {0, 255};
        case TipoAccess::Int:
            return {-32768, 32767};
        default:
            return {-2147483648LL, 2147483647LL};
    }
}

/// The length of a text in 16-bit units, or nothing when it is no UTF-8.
std::optional<qsizetype> largoDe(QByteArrayView utf8) {
    if (std::ranges::all_of(utf8, [](char c) { return (c & 0x80) == 0; })) return utf8.size();
    QStringDecoder decodificador(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString texto = decodificador(utf8);
    if (decodificador.hasError()) return std::nullopt;
    return texto.size();
}

template <typename Elemento>
bool yaEsta(const std::vector<Elemento>& todos, const QString& nombre) {
    return std::ranges::any_of(
        todos, [&](const Elemento& uno) { return uno.nombre.compare(nombre, Qt::CaseInsensitive) == 0; });
}

std::vector<QByteArrayView> camposDe(QByteArrayView texto) {
    std::vector<QByteArrayView> campos;
    for (qsizetype desde = 0;;) {
        const qsizetype tabulador = texto.indexOf('\t', desde);
        campos.push_back(texto.sliced(desde, (tabulador < 0 ? texto.size() : tabulador) - desde));
        if (tabulador < 0) return campos;
        desde = tabulador + 1;
    }
}

/// A name or other short text, with its escapes undone.
std::optional<QString> leerTexto(QByteArrayView campo) {
    QByteArray suelto;
    for (qsizetype i = 0; i < campo.size(); ++i) {
        if (campo[i] != '\\') {
            suelto += campo[i];
            continue;
        }
        if (++i == campo.size()) return std::nullopt;
        const QByteArrayView signos("\\tn0");
        const qsizetype cual = signos.indexOf(campo[i]);
        if (cual < 0) return std::nullopt;
        suelto += "\\\t\n\0"[cual];
    }
    if (!largoDe(suelto)) return std::nullopt;
    return QString::fromUtf8(suelto);
}

}  // namespace

basic::RuntimeError errorAccess(const QString& descripcion) {
    return {kErrorAccess, descripcion, u"Access"_s};
}

void FlujoAccess::incomprensible() const {
    if (estado_ == Estado::Filas)
        throw errorAccess(
            u"Tabla %1, fila %2: lo leído no se entiende."_s.arg(tablas_[actual_].nombre).arg(filas_ + 1));
    if (estado_ == Estado::Definiciones && !tablas_.empty())
        throw errorAccess(u"Tabla %1: lo leído de su definición, o de lo que la sigue, no se entiende."_s.arg(
            tablas_.back().nombre));
    throw errorAccess(u"Lo leído del archivo de Access no se entiende."_s);
}

void FlujoAccess::ajeno(QByteArrayView texto) {
    const std::vector<QByteArrayView> campos = camposDe(texto);
    const auto tabla = campos.size() == 3 ? leerTexto(campos[1]) : std::nullopt;
    const auto palabras = campos.size() == 3 ? leerTexto(campos[2]) : std::nullopt;
    if (!tabla || !palabras) throw errorAccess(u"Lo leído del archivo de Access no se entiende."_s);
    throw errorAccess(tabla->isEmpty() ? *palabras : u"Tabla %1: %2"_s.arg(*tabla, *palabras));
}

void FlujoAccess::recibir(QByteArrayView trozo) {
    while (!trozo.isEmpty()) {
        const qsizetype fin = trozo.indexOf('\n');
        if (resto_.size() + (fin < 0 ? trozo.size() : fin) > kMaxLineaAccess) incomprensible();
        if (fin < 0) {
            resto_.append(trozo);
            return;
        }
        if (resto_.isEmpty()) {
            linea(trozo.first(fin));
        } else {
            resto_.append(trozo.first(fin));
            linea(resto_);
            resto_.clear();
        }
        trozo = trozo.sliced(fin + 1);
    }
}

void FlujoAccess::terminar() const {
    if (estado_ == Estado::Fin && resto_.isEmpty()) return;
    throw errorAccess(
        estado_ == Estado::Filas
            ? u"Tabla %1: la lectura se cortó después de la fila %2."_s.arg(tablas_[actual_].nombre)
                  .arg(filas_)
            : u"La lectura del archivo de Access se cortó antes de acabar."_s);
}

void FlujoAccess::linea(QByteArrayView texto) {
    if (texto.isEmpty()) incomprensible();
    const char clase = texto.front();
    if (clase == 'X') ajeno(texto);
    if (estado_ == Estado::Filas && clase == 'W') return fila(texto);
    const Campos campos = camposDe(texto);
    if (campos[0].size() != 1) incomprensible();
    switch (estado_) {
        case Estado::Comienzo:
            if (clase != 'A' || campos.size() != 2 || campos[1] != "1") incomprensible();
            estado_ = Estado::Definiciones;
            return;
        case Estado::Definiciones:
            if (clase == 'D' || clase == 'Z') {
                acabarDefiniciones();
                return clase == 'D' ? comenzarFilas(campos) : acabar(campos);
            }
            return definicion(clase, campos);
        case Estado::EntreTablas:
            if (clase == 'D') return comenzarFilas(campos);
            if (clase == 'Z') return acabar(campos);
            break;
        case Estado::Filas:
            if (clase == 'E') return acabarFilas(campos);
            break;
        case Estado::Fin:
            break;
    }
    incomprensible();
}

void FlujoAccess::definicion(char clase, const Campos& campos) {
    if (clase == 'R' && tablas_.empty()) return relacion(campos);
    if (clase == 'T') return tabla(campos);
    if (clase == 'C' && !tablas_.empty()) return columna(campos);
    incomprensible();
}

void FlujoAccess::relacion(const Campos& campos) {
    if (campos.size() != 6) incomprensible();
    std::array<QString, 5> textos;
    for (std::size_t i = 0; i < textos.size(); ++i) {
        const auto texto = leerTexto(campos[i + 1]);
        if (!texto || texto->size() > kMaxNombre) incomprensible();
        textos[i] = *texto;
    }
    relaciones_.push_back({textos[0], textos[1], textos[2], textos[3], textos[4]});
}

void FlujoAccess::tabla(const Campos& campos) {
    if (campos.size() != 4 || tablas_.size() == kMaxTablas) incomprensible();
    if (!tablas_.empty() && tablas_.back().columnas.empty()) incomprensible();
    const auto nombre = leerTexto(campos[1]);
    const auto filas = leerNumero<quint32>(campos[2]);
    const auto ultimo = leerNumero<qint32>(campos[3]);
    const bool bien = nombre && !nombre->isEmpty() && nombre->size() <= kMaxNombre && filas && ultimo;
    if (!bien || yaEsta(tablas_, *nombre)) incomprensible();
    tablas_.push_back({*nombre, *filas, *ultimo, {}});
}

void FlujoAccess::columna(const Campos& campos) {
    std::vector<ColumnaAccess>& columnas = tablas_.back().columnas;
    if (campos.size() != 7 || columnas.size() == kMaxColumnas) incomprensible();
    const auto nombre = leerTexto(campos[1]);
    const auto tipo = std::ranges::find_if(kTipos, [&](const auto& uno) { return campos[2] == uno.nombre; });
    const auto bytes = leerNumero<qint32>(campos[3]);
    const auto cifras = leerNumero<qint32>(campos[4]);
    const auto decimales = leerNumero<qint32>(campos[5]);
    const bool bien = nombre && !nombre->isEmpty() && nombre->size() <= kMaxNombre && tipo != kTipos.end() &&
                      bytes && *bytes >= 0 && cifras && decimales && (campos[6] == "0" || campos[6] == "1");
    if (!bien || yaEsta(columnas, *nombre)) incomprensible();
    const bool exacta = tipo->tipo == TipoAccess::Numeric;
    const bool medida = *cifras >= 1 && *cifras <= kMaxCifras && *decimales >= 0 && *decimales <= *cifras;
    if (exacta && !medida) incomprensible();
    columnas.push_back({*nombre, tipo->tipo, *bytes, *cifras, *decimales, campos[6] == "1"});
}

void FlujoAccess::acabarDefiniciones() {
    if (!tablas_.empty() && tablas_.back().columnas.empty()) incomprensible();
    estado_ = Estado::EntreTablas;
    receptor_.definido(tablas_, relaciones_);
}

void FlujoAccess::comenzarFilas(const Campos& campos) {
    const auto nombre = campos.size() == 2 ? leerTexto(campos[1]) : std::nullopt;
    if (!nombre || actual_ >= tablas_.size() || tablas_[actual_].nombre != *nombre) incomprensible();
    estado_ = Estado::Filas;
    filas_ = 0;
    receptor_.empiezaTabla(actual_);
}

void FlujoAccess::fila(QByteArrayView texto) {
    const std::vector<ColumnaAccess>& columnas = tablas_[actual_].columnas;
    valores_.clear();
    suelto_.resize(0);
    suelto_.reserve(texto.size());  // what is freed of its escapes is shorter: the views into it stay good
    qsizetype lugar = 1;
    for (const ColumnaAccess& columna : columnas) {
        if (lugar >= texto.size() || texto[lugar] != '\t') incomprensible();
        const qsizetype tabulador = texto.indexOf('\t', lugar + 1);
        const qsizetype fin = tabulador < 0 ? texto.size() : tabulador;
        valores_.push_back(valor(columna, texto.sliced(lugar + 1, fin - lugar - 1)));
        lugar = fin;
    }
    if (lugar != texto.size()) incomprensible();
    receptor_.fila(valores_);
    ++filas_;
}

ValorAccess FlujoAccess::valor(const ColumnaAccess& columna, QByteArrayView campo) {
    using Clase = ValorAccess::Clase;
    if (campo.isEmpty()) incomprensible();
    const char signo = campo.front();
    const QByteArrayView resto = campo.sliced(1);
    ValorAccess valor;
    if (signo == '-' || signo == '!') {
        if (!resto.isEmpty() || (signo == '-' && columna.tipo == TipoAccess::Bool)) incomprensible();
        valor.clase = signo == '-' ? Clase::Nulo : Clase::Ilegible;
        return valor;
    }
    valor.clase = claseDe(columna.tipo);
    switch (valor.clase) {
        case Clase::Entero: {
            const auto numero = leerNumero<qint64>(resto);
            const Margen margen = margenDe(columna.tipo);
            if (signo != '#' || !numero || *numero < margen.desde || *numero > margen.hasta) incomprensible();
            valor.entero = *numero;
            return valor;
        }
        case Clase::Doble: {
            const auto bits = resto.size() == 16 ? leerNumero<quint64>(resto, 16) : std::nullopt;
            if (signo != '=' || !bits) incomprensible();
            valor.doble = std::bit_cast<double>(*bits);
            return valor;
        }
        case Clase::Decimal:
            if (signo != '~' || !esDecimal(resto)) incomprensible();
            valor.bytes = resto;
            return valor;
        case Clase::Texto: {
            if (signo != '"') incomprensible();
            valor.bytes = liberar(resto);
            const auto largo = largoDe(valor.bytes);
            if (!largo || (columna.tipo == TipoAccess::Text && *largo > columna.bytes / 2)) incomprensible();
            return valor;
        }
        default:
            break;
    }
    if (signo != 'x' || resto.size() % 2 != 0) incomprensible();
    const qsizetype desde = suelto_.size();
    for (qsizetype i = 0; i < resto.size(); i += 2) {
        const int alta = valorDeCifra(resto[i]);
        const int baja = valorDeCifra(resto[i + 1]);
        if (alta < 0 || baja < 0) incomprensible();
        suelto_ += static_cast<char>(alta << 4 | baja);
    }
    valor.bytes = QByteArrayView(suelto_).sliced(desde);
    if (columna.tipo == TipoAccess::Guid && valor.bytes.size() != kBytesIdentidad) incomprensible();
    if (columna.tipo == TipoAccess::Binary && valor.bytes.size() > columna.bytes) incomprensible();
    return valor;
}

QByteArrayView FlujoAccess::liberar(QByteArrayView campo) {
    qsizetype barra = campo.indexOf('\\');
    if (barra < 0) return campo;
    const qsizetype desde = suelto_.size();
    qsizetype copiado = 0;
    for (; barra >= 0; barra = campo.indexOf('\\', copiado)) {
        suelto_.append(campo.sliced(copiado, barra - copiado));
        if (barra + 1 == campo.size()) incomprensible();
        switch (campo[barra + 1]) {
            case '\\':
                suelto_ += '\\';
                break;
            case 't':
                suelto_ += '\t';
                break;
            case 'n':
                suelto_ += '\n';
                break;
            case '0':
                suelto_ += '\0';
                break;
            default:
                incomprensible();
        }
        copiado = barra + 2;
    }
    suelto_.append(campo.sliced(copiado));
    return QByteArrayView(suelto_).sliced(desde);
}

void FlujoAccess::acabarFilas(const Campos& campos) {
    const auto dichas = campos.size() == 2 ? leerNumero<qint64>(campos[1]) : std::nullopt;
    const TablaAccess& tabla = tablas_[actual_];
    if (!dichas || *dichas != filas_) incomprensible();
    if (filas_ != tabla.filas) {
        throw errorAccess(
            u"Tabla %1: según el archivo tiene %2 filas, y se han leído %3. El archivo está dañado."_s
                .arg(tabla.nombre)
                .arg(tabla.filas)
                .arg(filas_));
    }
    receptor_.acabaTabla();
    todas_ += filas_;
    ++actual_;
    estado_ = Estado::EntreTablas;
}

void FlujoAccess::acabar(const Campos& campos) {
    const auto tablas = campos.size() == 3 ? leerNumero<quint64>(campos[1]) : std::nullopt;
    const auto filas = campos.size() == 3 ? leerNumero<qint64>(campos[2]) : std::nullopt;
    if (!tablas || *tablas != tablas_.size() || actual_ != tablas_.size() || !filas || *filas != todas_)
        incomprensible();
    estado_ = Estado::Fin;
}

}  // namespace tarmel
