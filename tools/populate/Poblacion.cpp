#include "populate/Poblacion.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <unordered_set>

#include "platform/ado/Recordset.h"
#include "populate/Azar.h"
#include "populate/Existencias.h"
#include "populate/Fuentes.h"
#include "sheets/Anillas.h"

namespace tarmel::muestra {

using basic::Date;
using basic::Null;
using basic::Variant;
using namespace Qt::StringLiterals;

namespace {

constexpr int kCapturasPorHoja = 40;
constexpr int kHojasPorAnillador = 400;
constexpr int kMaxAnilladores = 40;
constexpr int kAnilladoresPorGrupo = 5;
constexpr int kPrimerGrupo = 900101;
constexpr int kEntidad = 500001;
constexpr int kLugares = 4;  // where a ringer works
constexpr int kHojasPorLote = 200;
constexpr int kUltimoAño = 2024;
constexpr int kAños = 15;
constexpr int kMinAños = 3;
constexpr int kHojasAlAño = 60;

constexpr int kRecuperaciones = 11;  // of a hundred captures; some find no ring that could have come back
constexpr int kAjenas = 5;           // of a hundred recoveries
constexpr int kFielesAlLugar = 90;
constexpr int kHojasDeGrupo = 20;
constexpr int kNidos = 15;  // of a hundred sheets of late spring

constexpr char16_t kPollo = u'1';  // ages: nestling, of this year
constexpr char16_t kDelAño = u'3';

struct Anillador {
    int codigo = 0;
    int grupo = 0;
    QString iniciales;
    std::vector<int> lugares;
};

struct Hoja {
    int id = 0;
    const Anillador* anillador = nullptr;
    int indice = 0;  ///< the ringer's, among all
    int lugar = 0;
    Date dia;
    int abre = 0;  ///< minutes of the day
    int cierra = 0;
    bool nido = false;
};

/// A ringed bird, small, since there may be a million.
struct Ave {
    Existencias::Anilla anilla;
    std::uint16_t especie;
    char16_t sexo;
    char16_t edad;
    std::int32_t dia;
};

/// One capture, as far as its kinds differ.
struct Captura {
    bool recuperacion = false;
    QString centro = u"ESI"_s;
    QString anilla;
    const Especie* especie = nullptr;
    QChar edad;
    QChar sexo;
};

constexpr char16_t kInsercion[] =
    u"INSERT INTO ANIAHO (IdCabecera,NumRegistro,TipoRegistro,CodigoCentro,NumeroAnilla,InfoAnilla,"
    "AnillaSustituida,IdEspecie,CodigoEdad,TamañoNidada,CodigoSexo,CodigoManipulacion,CodigoTransporte,"
    "CodigoCircunstancia,CodigoCondicion,Ala,F8,Peso,Tarso,CodigoPlaca,CodigoGrasa,CodigoMusculo,HoraCaptura,"
    "PrecisionFecha,CodigoEstado,CodigoEstatus,CodigoMuda,CodigoReclamo,IniAnillador,Parentesco,"
    "Observaciones,"
    "Dato1,Dato2,Dato3,Anilla,Dato4,Dato5,Dato6,CodigoEspecie) VALUES "
    "(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,"
    "?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)";

constexpr char16_t kInsercionHoja[] =
    u"INSERT INTO ANICHO "
    u"(IdCabecera,NumHoja,CodAnillador,CodLocalidad,FechaCaptura,CodigoHabitat,CodigoMetodo,"
    "NumRedes,LongitudRed,HoraDesde,HoraHasta,Campanna,CodigoEstacion,MannanaCodigoFuerza,"
    "MannanaCodigoDireccion,MannanaCodigoNubosidad,MannanaCodigoLluvia,TardeCodigoFuerza,"
    "TardeCodigoDireccion,"
    "TardeCodigoNubosidad,TardeCodigoLluvia,Observaciones,Dato1,Dato2,Dato3,Dato4,Dato5,Dato6,Anillador,"
    "Grupo) "
    "VALUES (-1,?,?,?,?,?,?,?,?,?,?,?,'',?,?,?,?,?,?,?,?,'','','','','','','',?,?)";

Date horaDe(int minutos) {
    return Date::timeOfDay(minutos / 60, minutos % 60);
}

/// As read off an instrument that shows so many parts of the unit.
double redondear(double valor, int partes) {
    return std::round(valor * partes) / partes;
}

bool esPajaro(const Especie& especie) {
    return especie.clase != u"grande"_s;
}

/// The filling itself: sheet by sheet, day after day.
class Poblacion {
 public:
    Poblacion(ado::Connection& conexion, int capturas, quint64 semilla)
        : conexion_(conexion),
          total_(capturas),
          azar_(semilla),
          fuentes_(leerFuentes(conexion)),
          existencias_(conexion, fuentes_.series),
          avesDelLugar_(fuentes_.localidades.size()) {
        const int hojas = (total_ + kCapturasPorHoja - 1) / kCapturasPorHoja;
        const int años = std::clamp(hojas / kHojasAlAño, kMinAños, kAños);
        primerDia_ = Date::of(kUltimoAño - años + 1, 1, 1);
        ultimoDia_ = Date::of(kUltimoAño, 12, 31);
        anilladores_.resize(
            static_cast<std::size_t>(std::clamp(1 + hojas / kHojasPorAnillador, 1, kMaxAnilladores)));
    }

    Resumen poblar() {
        ado::Connection::Batch gente(conexion_);
        for (std::size_t i = 0; i < anilladores_.size(); ++i)
            inscribir(static_cast<int>(i));
        gente.commit();
        while (resumen_.capturas < total_)
            llenarHojas();
        ado::Connection::Batch restos(conexion_);
        existencias_.devolver(ultimoDia_);
        restos.commit();
        resumen_.anilladores = static_cast<int>(anilladores_.size());
        return resumen_;
    }

 private:
    void inscribir(int indice);
    void llenarHojas();
    Hoja abrirHoja();
    void insertarHoja(Hoja& hoja, qint64 numero, int dueño);
    void capturar(const Hoja& hoja, int numero, int deCuantas);
    Captura anillar(const Hoja& hoja, bool nido);
    bool recuperar(const Hoja& hoja, Captura& captura);
    Captura recuperarAjena(const Hoja& hoja);
    const Especie& especieDelDia(Date dia);
    QChar edadDelDia(Date dia);
    void insertar(const Hoja& hoja, int numero, int minutos, const Captura& captura);

    ado::Connection& conexion_;
    const int total_;
    Azar azar_;
    const Fuentes fuentes_;
    Existencias existencias_;
    Date primerDia_;
    Date ultimoDia_;
    Resumen resumen_;
    std::vector<Anillador> anilladores_;
    std::map<int, int> hojasDe_;  ///< running number by owner
    std::vector<Ave> aves_;
    std::vector<std::vector<std::uint32_t>> avesDelLugar_;
    std::unordered_set<std::uint32_t> vistasHoy_;  ///< once a day: a recovery is known by its date and hour
    Date hoy_;
    int ajenas_ = 0;
    int pollosDelNido_ = 0;
    const Especie* especieDelNido_ = nullptr;
};

void Poblacion::inscribir(int indice) {
    const Persona& nombre = azar_.uno(fuentes_.personas);
    const Persona& primero = azar_.uno(fuentes_.personas);
    const Persona& segundo = azar_.uno(fuentes_.personas);
    Anillador& nuevo = anilladores_[static_cast<std::size_t>(indice)];
    nuevo.codigo = kPrimerAnillador + indice;
    nuevo.grupo = kPrimerGrupo + indice / kAnilladoresPorGrupo;
    nuevo.iniciales = nombre.nombre.left(1) + primero.apellido.left(1) + segundo.apellido.left(1);
    // Neighbours in the list lie in one province.
    const int lugares = static_cast<int>(fuentes_.localidades.size());
    const int desde = azar_.menorQue(lugares);
    for (int n = 0; n < kLugares; ++n)
        nuevo.lugares.push_back((desde + n) % lugares);
    const bool coordinador = indice % kAnilladoresPorGrupo == 0;
    conexion_.Execute(
        u"INSERT INTO ANIMAT (IdAnillador, CodigoAnillador, NombreAnillador, CoordinadorGrupo, CodigoGrupo, "
        "NombreGrupo, CodigoEntidad, NombreEntidad) VALUES (-1, ?, ?, ?, ?, ?, ?, ?)"_s,
        {nuevo.codigo, nombre.nombre + u' ' + primero.apellido + u' ' + segundo.apellido, coordinador ? 1 : 0,
         QString::number(nuevo.grupo), u"GRUPO DE MUESTRA %1"_s.arg(nuevo.grupo - kPrimerGrupo + 1),
         QString::number(kEntidad), u"ENTIDAD DE MUESTRA"_s});
    conexion_.Execute(u"UPDATE ANIMAT SET IdAnillador=IdAni WHERE CodigoAnillador=%1"_s.arg(nuevo.codigo));
}

void Poblacion::llenarHojas() {
    ado::Connection::Batch lote(conexion_);
    for (int n = 0; n < kHojasPorLote && resumen_.capturas < total_; ++n) {
        const Hoja hoja = abrirHoja();
        const int cuantas =
            std::min(azar_.entre(kCapturasPorHoja / 2, kCapturasPorHoja * 3 / 2), total_ - resumen_.capturas);
        for (int numero = 1; numero <= cuantas; ++numero)
            capturar(hoja, numero, cuantas);
        resumen_.capturas += cuantas;
        ++resumen_.hojas;
    }
    lote.commit();
}

Hoja Poblacion::abrirHoja() {
    Hoja hoja;
    hoja.indice = azar_.menorQue(static_cast<int>(anilladores_.size()));
    hoja.anillador = &anilladores_[static_cast<std::size_t>(hoja.indice)];
    hoja.lugar = azar_.uno(hoja.anillador->lugares);
    const double hecho = static_cast<double>(resumen_.capturas) / total_;
    hoja.dia = Date(std::floor(primerDia_.serial() + hecho * (ultimoDia_.serial() - primerDia_.serial())));
    if (hoja.dia != hoy_) vistasHoy_.clear();
    hoy_ = hoja.dia;
    const int mes = hoja.dia.month();
    hoja.nido = (mes == 5 || mes == 6) && azar_.deCadaCien(kNidos);
    pollosDelNido_ = 0;
    hoja.abre = azar_.entre(12, 17) * 30;
    hoja.cierra = hoja.abre + azar_.entre(8, 14) * 30;
    const int dueño = azar_.deCadaCien(kHojasDeGrupo) ? hoja.anillador->grupo : hoja.anillador->codigo;
    insertarHoja(hoja, qint64{dueño} * 1000000 + ++hojasDe_[dueño], dueño);
    return hoja;
}

void Poblacion::insertarHoja(Hoja& hoja, qint64 numero, int dueño) {
    // The first rows of the weather's lists: nobody opens nets in a gale.
    const auto deLosPrimeros = [this](const Codigos& codigos) {
        constexpr int kTiempoDeRedes = 5;
        return codigos[static_cast<std::size_t>(
            azar_.menorQue(std::min(kTiempoDeRedes, static_cast<int>(codigos.size()))))];
    };
    const int redes = azar_.entre(4, 14);
    const auto siHayRedes = [&](int valor) { return hoja.nido ? Variant(Null{}) : Variant(valor); };
    std::vector<Variant> valores{
        numero,
        dueño,
        fuentes_.localidades[static_cast<std::size_t>(hoja.lugar)],
        hoja.dia,
        azar_.uno(fuentes_.habitats),
        hoja.nido ? u"N"_s : u"M"_s,
        siHayRedes(redes),
        siHayRedes(redes * 12),
        horaDe(hoja.abre),
        horaDe(hoja.cierra),
        azar_.deCadaCien(20) ? u"MUESTRA %1"_s.arg(hoja.dia.year()) : QString(u""_s)};
    for (int mitad = 0; mitad < 2; ++mitad) {
        for (const Codigos* codigos :
             {&fuentes_.fuerzas, &fuentes_.direcciones, &fuentes_.nubosidades, &fuentes_.lluvias})
            valores.emplace_back(deLosPrimeros(*codigos));
    }
    valores.emplace_back(hoja.anillador->codigo);
    valores.emplace_back(hoja.anillador->grupo);
    conexion_.Execute(QString::fromUtf16(kInsercionHoja), valores);
    conexion_.Execute(u"UPDATE ANICHO SET IdCabecera = IdCab WHERE IdCabecera = -1"_s);
    ado::Recordset nueva;
    nueva.Open(u"SELECT IdCabecera FROM ANICHO WHERE CodAnillador = ? AND NumHoja = ?"_s, conexion_,
               ado::Cursor::ForwardOnly, ado::Lock::ReadOnly, -1, {dueño, numero});
    hoja.id = nueva.Value(0).toLong();
}

/// The birds come in the order of the rounds of the nets, every half an hour.
void Poblacion::capturar(const Hoja& hoja, int numero, int deCuantas) {
    constexpr int ronda = 30;
    const int rondas = (hoja.cierra - hoja.abre) / ronda;
    const int minutos = hoja.abre + (numero * rondas / (deCuantas + 1) + 1) * ronda;
    Captura captura;
    if (!hoja.nido && azar_.deCadaCien(kRecuperaciones)) {
        if (azar_.deCadaCien(kAjenas)) {
            captura = recuperarAjena(hoja);
        } else if (!recuperar(hoja, captura)) {
            captura = anillar(hoja, false);
        }
    } else {
        captura = anillar(hoja, hoja.nido);
    }
    if (captura.recuperacion) ++resumen_.recuperaciones;
    insertar(hoja, numero, minutos, captura);
}

Captura Poblacion::anillar(const Hoja& hoja, bool nido) {
    Captura captura;
    if (nido && pollosDelNido_ == 0) {
        especieDelNido_ = &especieDelDia(hoja.dia);
        pollosDelNido_ = azar_.entre(3, 6);
    }
    if (nido) --pollosDelNido_;
    captura.especie = nido ? especieDelNido_ : &especieDelDia(hoja.dia);
    captura.edad = nido ? QChar(kPollo) : edadDelDia(hoja.dia);
    const bool sexado = captura.especie->sexable && !nido && azar_.deCadaCien(85);
    captura.sexo = !sexado ? u'U' : azar_.deCadaCien(50) ? u'M' : u'F';
    const auto anilla = existencias_.tomar(hoja.indice, captura.especie->clase, hoja.dia);
    captura.anilla = existencias_.leer(anilla);
    const auto ave = static_cast<std::uint32_t>(aves_.size());
    aves_.push_back({anilla, static_cast<std::uint16_t>(captura.especie - fuentes_.especies.data()),
                     captura.sexo.unicode(), captura.edad.unicode(),
                     static_cast<std::int32_t>(hoja.dia.serial())});
    avesDelLugar_[static_cast<std::size_t>(hoja.lugar)].push_back(ave);
    return captura;
}

/// A bird ringed on an earlier day, most often at the same place, that may be there at this time of the year.
bool Poblacion::recuperar(const Hoja& hoja, Captura& captura) {
    const auto& delLugar = avesDelLugar_[static_cast<std::size_t>(hoja.lugar)];
    constexpr int intentos = 8;
    for (int n = 0; n < intentos && !aves_.empty(); ++n) {
        const bool fiel = !delLugar.empty() && azar_.deCadaCien(kFielesAlLugar);
        const std::uint32_t cual =
            fiel ? azar_.uno(delLugar)
                 : static_cast<std::uint32_t>(azar_.menorQue(static_cast<int>(aves_.size())));
        const Ave& ave = aves_[cual];
        const Especie& especie = fuentes_.especies[ave.especie];
        const bool esVerano = hoja.dia.month() >= 4 && hoja.dia.month() <= 9;
        if (ave.dia >= hoja.dia.serial() || !(esVerano ? especie.verano : especie.invierno)) continue;
        if (!vistasHoy_.insert(cual).second) continue;
        captura.recuperacion = true;
        captura.anilla = existencias_.leer(ave.anilla);
        captura.especie = &especie;
        captura.sexo = QChar(ave.sexo);
        const int años = hoja.dia.year() - Date(ave.dia).year();
        const bool delAño = ave.edad == kPollo || ave.edad == kDelAño;
        if (años == 0) captura.edad = delAño ? QChar(kDelAño) : QChar(ave.edad);
        if (años > 0) captura.edad = delAño && años == 1 ? u'5' : u'6';
        return true;
    }
    return false;
}

/// A ring of another scheme. No number comes twice.
Captura Poblacion::recuperarAjena(const Hoja& hoja) {
    Captura captura;
    captura.recuperacion = true;
    captura.centro = azar_.uno(fuentes_.centrosAjenos);
    captura.anilla = u'8' + QString::number(100000 + ajenas_++ % 900000);
    captura.especie = &especieDelDia(hoja.dia);
    captura.edad = edadDelDia(hoja.dia);
    captura.sexo = u'U';
    return captura;
}

const Especie& Poblacion::especieDelDia(Date dia) {
    const bool verano = dia.month() >= 4 && dia.month() <= 9;
    const auto presente = [&](const Especie& especie) {
        return (verano ? especie.verano : especie.invierno) ? especie.frecuencia : 0;
    };
    int suma = 0;
    for (const Especie& especie : fuentes_.especies)
        suma += presente(especie);
    int turno = azar_.menorQue(suma);
    for (const Especie& especie : fuentes_.especies) {
        turno -= presente(especie);
        if (turno < 0) return especie;
    }
    return fuentes_.especies.front();
}

/// Birds of the year fly from June on; before, the last year's are told from the older ones.
QChar Poblacion::edadDelDia(Date dia) {
    if (dia.month() >= 6) return azar_.deCadaCien(60) ? u'3' : u'4';
    return azar_.deCadaCien(45) ? u'5' : azar_.deCadaCien(70) ? u'6' : u'4';
}

void Poblacion::insertar(const Hoja& hoja, int numero, int minutos, const Captura& captura) {
    const Especie& especie = *captura.especie;
    const bool pollo = captura.edad == kPollo;
    const bool medido = !pollo && azar_.deCadaCien(92);
    // Males a little larger; the third primary of a small bird is some three quarters of the wing.
    const double talla = captura.sexo == u'M' ? 1.015 : captura.sexo == u'F' ? 0.985 : 1;
    const double ala = redondear(azar_.alrededor(especie.ala * talla, especie.ala * 0.025), 2);
    const double peso =
        redondear(azar_.alrededor(especie.peso * talla * (pollo ? 0.9 : 1), especie.peso * 0.07), 10);
    const double f8 = redondear(azar_.alrededor(ala * 0.755, 0.6), 2);
    const double tarso = redondear(azar_.alrededor(especie.tarso, especie.tarso * 0.025), 10);
    const auto siSeMide = [](bool se, double valor) { return se ? Variant(valor) : Variant(Null{}); };
    const auto grado = [&](int hasta) { return medido ? QString::number(azar_.entre(0, hasta)) : u"9"_s; };
    const int mes = hoja.dia.month();
    const bool cría = mes >= 4 && mes <= 7;
    const QString estatus = pollo                             ? u"-"_s
                            : cría && captura.edad != kDelAño ? u"N"_s
                            : mes >= 8 && mes <= 10           ? u"P"_s
                            : mes >= 11 || mes <= 2           ? u"W"_s
                                                              : u"U"_s;
    const bool conPlaca = medido && cría && captura.edad != kDelAño && captura.sexo == u'F';
    const int muda = pollo ? 1 : !medido ? 0 : mes == 8 || mes == 9 ? azar_.entre(2, 5) : 2;
    const QString vacio = u""_s;
    QString normal = captura.anilla;
    normal = NormalizarAnilla(normal);
    conexion_.Execute(QString::fromUtf16(kInsercion), {hoja.id,
                                                       numero,
                                                       captura.recuperacion ? u"R"_s : u"A"_s,
                                                       captura.centro,
                                                       captura.anilla,
                                                       captura.recuperacion ? u"4"_s : u"2"_s,
                                                       vacio,
                                                       especie.id,
                                                       QString(captura.edad),
                                                       pollo ? u"0%1"_s.arg(azar_.entre(3, 6)) : u"--"_s,
                                                       QString(captura.sexo),
                                                       u"N"_s,
                                                       u"0"_s,
                                                       captura.recuperacion ? u"20"_s : vacio,
                                                       captura.recuperacion ? u"8"_s : vacio,
                                                       siSeMide(medido, ala),
                                                       siSeMide(medido && esPajaro(especie), f8),
                                                       siSeMide(medido || pollo, peso),
                                                       siSeMide(medido && azar_.deCadaCien(60), tarso),
                                                       conPlaca ? QString::number(azar_.entre(1, 5))
                                                       : medido ? u"0"_s
                                                                : u"9"_s,
                                                       grado(mes >= 8 && mes <= 10 ? 6 : 4),
                                                       grado(3),
                                                       horaDe(minutos),
                                                       u"0"_s,
                                                       azar_.deCadaCien(98) ? u"B"_s : u"R"_s,
                                                       estatus,
                                                       muda,
                                                       azar_.deCadaCien(95) || pollo ? u"N"_s : u"E"_s,
                                                       hoja.anillador->iniciales,
                                                       vacio,
                                                       azar_.deCadaCien(2) ? u"Ectoparásitos"_s : vacio,
                                                       vacio,
                                                       vacio,
                                                       vacio,
                                                       normal,
                                                       vacio,
                                                       vacio,
                                                       vacio,
                                                       especie.codigo});
}

void exigirVacia(ado::Connection& conexion) {
    for (const QString& tabla : {u"ANIMAT"_s, u"ANICHO"_s, u"ANIAHO"_s, u"ALMACEN"_s}) {
        ado::Recordset filas;
        filas.Open(u"SELECT Count(*) FROM "_s + tabla, conexion);
        if (filas.Value(0).toLong() > 0)
            throw basic::RuntimeError(5, u"La base de datos ya tiene datos en "_s + tabla, u"Muestra"_s);
    }
}

}  // namespace

Resumen poblar(ado::Connection& conexion, int capturas, quint64 semilla) {
    exigirVacia(conexion);
    return Poblacion(conexion, capturas, semilla).poblar();
}

}  // namespace tarmel::muestra
