// The contents of the prepared database: what its keys and relations need, and what the screens take for
// granted about codes and about positions in their lists.

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QSet>
#include <map>
#include <set>

#include "database/Csv.h"
#include "database/FilasFijas.h"
#include "platform/basic/Text.h"

namespace {

const QString Separator = QStringLiteral(" .-. ");

class Table {
 public:
    explicit Table(const QString& name) : name_(name), rows_(tarmel::leerCsv(path(name))) {
        if (rows_.empty()) return;
        heading_ = rows_.front();
        rows_.erase(rows_.begin());
    }

    [[nodiscard]] const std::vector<QString>& heading() const { return heading_; }
    [[nodiscard]] int size() const { return static_cast<int>(rows_.size()); }

    [[nodiscard]] const QString& at(int row, const char* column) const {
        for (size_t i = 0; i < heading_.size(); ++i) {
            if (heading_[i] == QString::fromUtf8(column)) return rows_.at(static_cast<size_t>(row)).at(i);
        }
        throw std::out_of_range(name_.toStdString() + " lacks the column " + column);
    }
    [[nodiscard]] int number(int row, const char* column) const {
        bool ok = false;
        const int n = at(row, column).toInt(&ok);
        if (!ok) ADD_FAILURE() << name_.toStdString() << ", row " << row << ": " << column << " is no number";
        return n;
    }
    [[nodiscard]] const std::vector<QString>& row(int row) const {
        return rows_.at(static_cast<size_t>(row));
    }
    [[nodiscard]] const std::vector<std::vector<QString>>& rows() const { return rows_; }

    /// All values of a column, in stored order.
    [[nodiscard]] std::vector<QString> column(const char* name) const {
        std::vector<QString> values;
        for (int i = 0; i < size(); ++i)
            values.push_back(at(i, name));
        return values;
    }

 private:
    static QString path(const QString& name) {
        return QStringLiteral(TARMEL_DATA_DIR "/tables/") + name + QStringLiteral(".csv");
    }

    QString name_;
    std::vector<std::vector<QString>> rows_;
    std::vector<QString> heading_;
};

std::set<QString> distinct(const std::vector<QString>& values) {
    return {values.begin(), values.end()};
}

/// Text that every screen, statement, exchange file and output file can carry: trimmed, within the ANSI code
/// page, without the marks that statements, files and combos give a meaning to, and not decoded twice.
testing::AssertionResult isPlainText(const QString& text) {
    static const QRegularExpression refused(QStringLiteral("['\";|\\x{00}-\\x{1f}ÃÂ\\x{fffd}]|  |\\.-\\."));
    if (text != text.trimmed() || text.contains(refused)) {
        return testing::AssertionFailure() << "unfit text: " << text.toStdString();
    }
    if (tarmel::basic::fromAnsi(tarmel::basic::toAnsi(text)) != text) {
        return testing::AssertionFailure() << "outside the ANSI code page: " << text.toStdString();
    }
    return testing::AssertionSuccess();
}

struct CodeTable {
    const char* table;
    const char* code;
    const char* name;
    int codeWidth;
};

void PrintTo(const CodeTable& t, std::ostream* out) {
    *out << t.table;
}

const CodeTable CodeTables[] = {
    {"ICAFRO", "CodigoCentro", "NombreCentro", 3},
    {"ICACIR", "CodigoCircunstancia", "NombreCircunstancia", 2},
    {"ICACON", "CodigoCondicion", "NombreCondicion", 1},
    {"ICAAGE", "CodigoEdad", "NombreEdad", 1},
    {"ICASEX", "CodigoSexo", "NombreSexo", 1},
    {"ICASTA", "CodigoEstatus", "NombreEstatus", 1},
    {"ICAMUDA", "CodigoMuda", "NombreMuda", 1},
    {"ICAINFORNG", "InfoAnilla", "NombreInfoAnilla", 1},
    {"ICAPRECISION", "CodigoPrecision", "NombrePrecision", 1},
    {"ICAMANIP", "CodigoManipulacion", "NombreManipulacion", 1},
    {"ICATRANS", "CodigoTransporte", "NombreTransporte", 1},
    {"ICATAM", "CodigoTamañoNidada", "NombreTamañoNidada", 2},
    {"ICAHAB", "CodigoHabitat", "NombreHabitat", 2},
    {"ANIRECLAMO", "CodigoReclamo", "NombreReclamo", 1},
    {"ANIMUS", "CodigoMusculo", "NombreMusculo", 1},
    {"ANIGRA", "CodigoGrasa", "NombreGrasa", 1},
    {"ANIPLACA", "CodigoPlaca", "NombrePlaca", 1},
    {"ANIESTADO", "CodigoEstado", "NombreEstado", 1},
    {"ANIMCA", "CodigoMetodo", "NombreMetodo", 1},
    {"ANIFVE", "CodigoFuerza", "NombreFuerza", 2},
    {"ANIDVI", "CodigoDireccion", "NombreDireccion", 3},
    {"ANINUB", "CodigoNubosidad", "NombreNubosidad", 1},
    {"ANILLU", "CodigoLluvia", "NombreLluvia", 1},
};

const char* codeColumn(const QString& table) {
    for (const CodeTable& t : CodeTables) {
        if (table == t.table) return t.code;
    }
    throw std::out_of_range("no code table " + table.toStdString());
}

class CodeTableTest : public testing::TestWithParam<CodeTable> {};

TEST_P(CodeTableTest, HasUniqueCodesOfTheirWidthWithNames) {
    const auto& [name, codeName, nameName, width] = GetParam();
    const Table table(name);
    ASSERT_EQ(table.heading(), (std::vector<QString>{codeName, nameName}));
    ASSERT_GT(table.size(), 0);
    QSet<QString> seen;
    for (int i = 0; i < table.size(); ++i) {
        const QString code = table.at(i, codeName);
        EXPECT_TRUE(!code.isEmpty() && code.size() <= width) << code.toStdString();
        // Text keys compare without regard to case.
        EXPECT_FALSE(seen.contains(code.toUpper())) << code.toStdString() << " stands twice";
        seen.insert(code.toUpper());
        EXPECT_FALSE(table.at(i, nameName).isEmpty());
        EXPECT_LE(table.at(i, nameName).size(), 60);
        EXPECT_TRUE(isPlainText(code));
        EXPECT_TRUE(isPlainText(table.at(i, nameName)));
    }
}

// Lists select the first item that begins with a code, with no regard to case. A code that begins another one
// must stand before it, and "-1", which stands for no selection, must begin none.
TEST_P(CodeTableTest, EveryCodeSelectsItsOwnItem) {
    const auto& [name, codeName, nameName, width] = GetParam();
    const Table table(name);
    std::vector<QString> items;
    for (int i = 0; i < table.size(); ++i)
        items.push_back(table.at(i, codeName) + Separator + table.at(i, nameName));

    for (int i = 0; i < table.size(); ++i) {
        const auto first = std::find_if(items.begin(), items.end(), [&](const QString& item) {
            return item.startsWith(table.at(i, codeName), Qt::CaseInsensitive);
        });
        EXPECT_EQ(first - items.begin(), i) << items[static_cast<size_t>(i)].toStdString();
    }
    for (const QString& item : items)
        EXPECT_FALSE(item.startsWith(QStringLiteral("-1")));
}

INSTANTIATE_TEST_SUITE_P(Tables, CodeTableTest, testing::ValuesIn(CodeTables),
                         [](const auto& tested) { return std::string(tested.param.table); });

struct Place {
    const char* table;
    int index;
    const char* code;
    const char* reason;
};

TEST(CodeTables, KeepThePositionsThatTheScreensLeanOn) {
    const Place places[] = {
        {"ICAAGE", 0, "0", "unknown age"},
        {"ICAAGE", 1, "1", "index 1 is the nestling and asks for the brood size"},
        {"ICAMUDA", 0, "0", "index 0 is no moult noted; a score then moves it to 2"},
        {"ANIMCA", 7, "M", "the eighth method is the mist net and asks for the nets"},
        {"ANIPLACA", 8, "9", "index 8 is not scored"},
        {"ANIGRA", 8, "9", "index 8 is not scored"},
        {"ANIMUS", 8, "9", "index 8 is not scored"},
        {"ICATAM", 0, "--", "an empty brood size shows the first item: no nestling"},
        {"ANIFVE", 0, "99", "empty weather shows the first item: not noted"},
        {"ANIDVI", 0, "99", "empty weather shows the first item: not noted"},
        {"ANINUB", 0, "9", "empty weather shows the first item: not noted"},
        {"ANILLU", 0, "9", "empty weather shows the first item: not noted"},
    };
    for (const Place& place : places) {
        const Table table(place.table);
        ASSERT_GT(table.size(), place.index) << place.table;
        EXPECT_EQ(table.at(place.index, codeColumn(place.table)), place.code)
            << place.table << ": " << place.reason;
    }
    // Index 4 opens the replaced ring and index 5 asks for it: the code is the index.
    const Table info("ICAINFORNG");
    ASSERT_EQ(info.size(), 8);
    for (int i = 0; i < info.size(); ++i)
        EXPECT_EQ(info.at(i, "InfoAnilla"), QString::number(i));
}

TEST(CodeTables, ScoresRunFromZeroToSevenAndNine) {
    const std::vector<QString> scores{"0", "1", "2", "3", "4", "5", "6", "7", "9"};
    for (const char* name : {"ANIPLACA", "ANIGRA", "ANIMUS"}) {
        EXPECT_EQ(Table(name).column(codeColumn(name)), scores) << name;
    }
}

TEST(CodeTables, HoldEveryCodeThatTheProgramSets) {
    const std::pair<const char*, const char*> codes[] = {
        {"ICAFRO", "ESI"},     {"ICAINFORNG", "2"}, {"ICAINFORNG", "4"}, {"ICAMANIP", "N"}, {"ICATRANS", "0"},
        {"ICAPRECISION", "0"}, {"ANIESTADO", "B"},  {"ICASTA", "U"},     {"ICAMUDA", "0"},  {"ICAMUDA", "2"},
        {"ANIRECLAMO", "N"},   {"ICACON", "8"},     {"ICACIR", "20"},
    };
    for (const auto& [name, code] : codes) {
        EXPECT_EQ(distinct(Table(name).column(codeColumn(name))).count(code), 1u)
            << name << " lacks " << code;
    }
}

TEST(CodeTables, MoultCodesAreWholeNumbers) {
    const Table moult("ICAMUDA");
    for (int i = 0; i < moult.size(); ++i)
        EXPECT_GE(moult.number(i, "CodigoMuda"), 0);
}

TEST(FixedRows, SexAndWindDirectionAndMovements) {
    using Rows = std::vector<std::vector<QString>>;
    EXPECT_EQ(Table("ICASEX").rows(),
              (Rows{{"U", "Desconocido o no anotado"}, {"M", "Macho"}, {"F", "Hembra"}}));
    EXPECT_EQ(Table("ANIDVI").rows(), (Rows{{"99", "Desconocido o no anotado"},
                                            {"E", "Este"},
                                            {"N", "Norte"},
                                            {"NE", "Noreste"},
                                            {"NW", "Noroeste"},
                                            {"S", "Sur"},
                                            {"SE", "Sureste"},
                                            {"SW", "Suroeste"},
                                            {"VA", "Variable"},
                                            {"NNE", "Nor-Nordeste"},
                                            {"NNW", "Nor-Noroeste"},
                                            {"SSE", "Sur-Sudeste"},
                                            {"SSW", "Sur-Sudoeste"},
                                            {"ENE", "Este-Nordeste"},
                                            {"ESE", "Este-Sudeste"},
                                            {"W", "Oeste"},
                                            {"WNW", "Oeste-Noroeste"},
                                            {"WSW", "Oeste-Sudoeste"}}));
    const Table movements("MOVIMIENTOS");
    EXPECT_EQ(movements.heading(), (std::vector<QString>{"IdMov", "Descripcion"}));
    EXPECT_EQ(movements.rows(),
              (Rows{{"A", "Anillas recibidas"}, {"D", "Devolución"}, {"T", "Traspaso a otro grupo"}}));
}

TEST(RingModels, AreTheTwoHundredAndFourOfTheStore) {
    const Table models("TIPOANILLAS");
    ASSERT_EQ(models.heading(), (std::vector<QString>{"Modelo", "Inscripcion", "Total"}));
    EXPECT_EQ(models.size(), 204);
    std::map<QString, std::vector<QString>> inscriptions;
    std::set<std::pair<QString, QString>> keys;
    for (int i = 0; i < models.size(); ++i) {
        const QString model = models.at(i, "Modelo");
        const QString inscription = models.at(i, "Inscripcion");
        EXPECT_TRUE(keys.emplace(model, inscription).second)
            << model.toStdString() << inscription.toStdString();
        EXPECT_LE(model.size(), 2);
        EXPECT_LE(inscription.size(), 2);
        EXPECT_EQ(models.at(i, "Total"), "0");
        inscriptions[model].push_back(inscription);
    }
    EXPECT_EQ(inscriptions.size(), 29u);
    EXPECT_EQ(inscriptions["0"].size(), 168u);
    EXPECT_EQ(inscriptions["0"].front(), "0");
    EXPECT_EQ(inscriptions["0"].back(), "PH");
    EXPECT_EQ(inscriptions["2"], (std::vector<QString>{"2", "2A"}));
    EXPECT_EQ(inscriptions["L"], (std::vector<QString>{"1L", "1N", "2L", "2N", "3L", "3N", "L", "N"}));
    for (const auto& [model, list] : inscriptions) {
        if (model == "0" || model == "2" || model == "L") continue;
        EXPECT_EQ(list, (std::vector<QString>{model}));
    }
}

TEST(Provinces, AreTheFiftyTwoWithTheirCommunityAndCountry) {
    const Table provinces("ICAPRO");
    ASSERT_EQ(provinces.heading(),
              (std::vector<QString>{"CodigoProvincia", "NombreProvincia", "CodigoComunidad", "CodigoPais"}));
    ASSERT_EQ(provinces.size(), 52);
    const std::set<QString> countries = distinct(Table("ICACNT").column("CodigoPais"));
    std::map<int, std::set<QString>> communities;
    for (int i = 0; i < provinces.size(); ++i) {
        EXPECT_EQ(provinces.at(i, "CodigoProvincia"), QString("%1").arg(i + 1, 2, 10, QChar(u'0')));
        EXPECT_EQ(countries.count(provinces.at(i, "CodigoPais")), 1u);
        EXPECT_TRUE(isPlainText(provinces.at(i, "NombreProvincia")));
        communities[provinces.number(i, "CodigoComunidad")].insert(provinces.at(i, "NombreProvincia"));
    }
    // Numbered as the community list of the query screen is, in which Ceuta is 10: not the statistical
    // office's way.
    const std::map<int, size_t> sizes{{1, 8},  {2, 3},  {3, 1},  {4, 1},  {5, 2},  {6, 1},  {7, 5},
                                      {8, 9},  {9, 4},  {10, 1}, {11, 2}, {12, 4}, {13, 1}, {14, 1},
                                      {15, 1}, {16, 1}, {17, 1}, {18, 3}, {19, 3}};
    ASSERT_EQ(communities.size(), sizes.size());
    for (const auto& [number, size] : sizes)
        EXPECT_EQ(communities[number].size(), size) << number;
    const std::pair<int, const char*> members[] = {
        {7, "Toledo"},   {8, "León"},    {10, "Ceuta"},   {13, "La Rioja"}, {14, "Madrid"},
        {15, "Melilla"}, {16, "Murcia"}, {17, "Navarra"}, {18, "Bizkaia"},  {19, "Alicante"}};
    for (const auto& [number, name] : members)
        EXPECT_EQ(communities[number].count(name), 1u) << name;
}

TEST(Countries, HaveUniqueCodes) {
    const Table countries("ICACNT");
    ASSERT_EQ(countries.heading(), (std::vector<QString>{"CodigoPais", "NombrePais"}));
    EXPECT_EQ(distinct(countries.column("CodigoPais")).size(), static_cast<size_t>(countries.size()));
    EXPECT_EQ(distinct(countries.column("NombrePais")).size(), static_cast<size_t>(countries.size()));
    for (int i = 0; i < countries.size(); ++i) {
        EXPECT_EQ(countries.at(i, "CodigoPais").size(), 2);
        EXPECT_TRUE(isPlainText(countries.at(i, "NombrePais")));
    }
}

TEST(Places, AreSpanishPlacesOfKnownProvinces) {
    const Table places("ANILOC");
    ASSERT_EQ(places.heading(),
              (std::vector<QString>{"IdLocalidad", "CodigoLocalidad", "CodigoProvincia", "NombreLocalidad",
                                    "Municipio", "CuadranteLatitud", "CuadranteLongitud", "GradosLatitud",
                                    "MinutosLatitud", "GradosLongitud", "MinutosLongitud", "OrigenDatos"}));
    EXPECT_GE(places.size(), 300);
    EXPECT_EQ(distinct(places.column("CodigoLocalidad")).size(), static_cast<size_t>(places.size()));
    EXPECT_EQ(distinct(places.column("CodigoProvincia")),
              distinct(Table("ICAPRO").column("CodigoProvincia")));
    for (int i = 0; i < places.size(); ++i) {
        SCOPED_TRACE(places.at(i, "CodigoLocalidad").toStdString());
        EXPECT_EQ(places.number(i, "IdLocalidad"), i + 1);
        EXPECT_TRUE(places.at(i, "CodigoLocalidad").startsWith(places.at(i, "CodigoProvincia")));
        for (const char* name : {"NombreLocalidad", "Municipio"}) {
            EXPECT_TRUE(isPlainText(places.at(i, name)));
            EXPECT_FALSE(places.at(i, name).isEmpty());
            EXPECT_LE(places.at(i, name).size(), 60);
        }
        EXPECT_EQ(places.at(i, "OrigenDatos"), "0");
        EXPECT_EQ(places.at(i, "CuadranteLatitud"), "N");
        const QString side = places.at(i, "CuadranteLongitud");
        EXPECT_TRUE(side == "E" || side == "W");
        const int latMinutes = places.number(i, "MinutosLatitud");
        const int lonMinutes = places.number(i, "MinutosLongitud");
        EXPECT_TRUE(latMinutes >= 0 && latMinutes < 60 && lonMinutes >= 0 && lonMinutes < 60);
        const double latitude = places.number(i, "GradosLatitud") + latMinutes / 60.0;
        const double longitude =
            (places.number(i, "GradosLongitud") + lonMinutes / 60.0) * (side == "W" ? -1 : 1);
        const bool canaries = latitude > 27.5 && latitude < 29.5 && longitude > -18.3 && longitude < -13.2;
        const bool mainland = latitude > 35.2 && latitude < 43.9 && longitude > -9.4 && longitude < 4.4;
        EXPECT_TRUE(canaries || mainland) << latitude << ' ' << longitude;
    }
}

// Spot checks against well-known positions: a swapped column or side would put all of them elsewhere.
TEST(Places, StandWhereTheyAre) {
    const std::map<QString, std::vector<QString>> expected{
        {"28079", {"Madrid", "N", "W", "40", "25", "3", "42"}},
        {"08019", {"Barcelona", "N", "E", "41", "23", "2", "10"}},
        {"35016", {"Las Palmas de Gran Canaria", "N", "W", "28", "6", "15", "25"}},
        {"15030", {"A Coruña", "N", "W", "43", "22", "8", "24"}}};
    const Table places("ANILOC");
    size_t found = 0;
    for (int i = 0; i < places.size(); ++i) {
        const auto it = expected.find(places.at(i, "CodigoLocalidad"));
        if (it == expected.end()) continue;
        ++found;
        const auto& row = places.row(i);
        EXPECT_EQ((std::vector<QString>{row[4], row[5], row[6], row[7], row[8], row[9], row[10]}),
                  it->second);
    }
    EXPECT_EQ(found, expected.size());
}

class Species : public testing::Test {
 protected:
    [[nodiscard]] std::map<QString, int> rowsByCode() const {
        std::map<QString, int> rows;
        for (int i = 0; i < table_.size(); ++i)
            rows[table_.at(i, "CodigoEspecie")] = i;
        return rows;
    }

    const Table table_{"ANIBRD"};
};

TEST_F(Species, HaveFiveDigitCodesInOrder) {
    ASSERT_EQ(table_.heading(), (std::vector<QString>{"IdEspecie", "CodigoEspecie", "NombreEspecie",
                                                      "NombreEspecie2", "Iberica", "OrigenDatos"}));
    EXPECT_GE(table_.size(), 450);
    static const QRegularExpression fiveDigits(QStringLiteral("^[0-9]{5}$"));
    QString previous;
    for (int i = 0; i < table_.size(); ++i) {
        const QString code = table_.at(i, "CodigoEspecie");
        SCOPED_TRACE(code.toStdString());
        EXPECT_TRUE(fiveDigits.match(code).hasMatch());
        EXPECT_LT(previous, code) << "repeated or out of order";
        previous = code;
        EXPECT_EQ(table_.number(i, "IdEspecie"), i + 1);
        EXPECT_TRUE(table_.at(i, "Iberica") == "0" || table_.at(i, "Iberica") == "1");
        EXPECT_EQ(table_.at(i, "OrigenDatos"), "0");
        EXPECT_FALSE(table_.at(i, "NombreEspecie").isEmpty());
        EXPECT_TRUE(isPlainText(table_.at(i, "NombreEspecie")));
        EXPECT_FALSE(table_.at(i, "NombreEspecie").contains("obsolete", Qt::CaseInsensitive));
        EXPECT_LE(table_.at(i, "NombreEspecie").size(), 80);
    }
}

// "Carricero común": a capital begins the name; another one only in a person's or place's name behind "de".
TEST_F(Species, HaveSpanishNamesWithTheUsualCapitals) {
    static const QRegularExpression lateCapital(QStringLiteral("[^ ]\\p{Lu}| \\p{Lu}"));
    static const QRegularExpression behindDe(QStringLiteral("(^| )del? .*$"));
    int named = 0;
    for (int i = 0; i < table_.size(); ++i) {
        const QString name = table_.at(i, "NombreEspecie2");
        SCOPED_TRACE(table_.at(i, "CodigoEspecie").toStdString() + ' ' + name.toStdString());
        if (name.isEmpty()) {
            EXPECT_EQ(table_.at(i, "Iberica"), "0") << "a species of the usual list needs its Spanish name";
            continue;
        }
        ++named;
        EXPECT_TRUE(isPlainText(name));
        EXPECT_LE(name.size(), 60);
        EXPECT_TRUE(name.front().isUpper());
        EXPECT_FALSE(QString(name).remove(behindDe).contains(lateCapital));
    }
    EXPECT_GE(named, 450);
}

TEST_F(Species, KnowTheBirdsThatRingersMeet) {
    const std::vector<std::vector<QString>> expected{
        {"12510", "Acrocephalus scirpaceus", "Carricero común", "1"},
        {"10990", "Erithacus rubecula", "Petirrojo europeo", "1"},
        {"12770", "Sylvia atricapilla", "Curruca capirotada", "1"},
        {"11870", "Turdus merula", "Mirlo común", "1"},
        {"13118", "Phylloscopus collybita", "Mosquitero común", "1"},
        {"13070", "Phylloscopus bonelli sensu lato", "Mosquitero papialbo", "1"},
        {"09920", "Hirundo rustica", "Golondrina común", "1"},
        {"15910", "Passer domesticus", "Gorrión común", "1"},
        {"01470", "Phoenicopterus ruber sensu lato", "Flamenco común", "1"},
        {"03110", "Falco eleonorae", "Halcón de Eleonora", "1"},
        {"11391", "Saxicola torquatus", "Tarabilla africana", "0"},
    };
    const std::map<QString, int> rows = rowsByCode();
    for (const auto& bird : expected) {
        const auto it = rows.find(bird[0]);
        ASSERT_NE(it, rows.end()) << bird[0].toStdString();
        const auto& row = table_.row(it->second);
        EXPECT_EQ((std::vector<QString>{row[1], row[2], row[3], row[4]}), bird);
    }
}

TEST_F(Species, SwitchedOffOnesAreNotOffered) {
    const QStringList switchedOff = tarmel::especiesApagadas();
    ASSERT_EQ(switchedOff.size(), 93);
    EXPECT_EQ(switchedOff.mid(0, 4), (QStringList{"12470", "12531", "12411", "20580"}));
    EXPECT_EQ(switchedOff.last(), "16330");
    const std::map<QString, int> rows = rowsByCode();
    QStringList unknown;
    for (const QString& code : switchedOff) {
        const auto it = rows.find(code);
        if (it == rows.end()) {
            unknown << code;
            continue;
        }
        EXPECT_EQ(table_.at(it->second, "Iberica"), "0") << code.toStdString();
    }
    // Codes that today's European list no longer has.
    EXPECT_EQ(unknown, (QStringList{"20580", "20590", "20610", "20620"}));
}

}  // namespace
