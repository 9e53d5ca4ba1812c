#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace tarmel::report {

/// Millimetres from the left and the top of the section; in a page that is laid out, of the paper.
struct Box {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
    [[nodiscard]] double right() const { return left + width; }
    [[nodiscard]] double bottom() const { return top + height; }
};

enum class Align { Left, Centre, Right };

/// What becomes of a text that is longer than its place.
enum class Fit {
    Cut,   ///< one line, cut with "…"
    Wrap,  ///< as many lines as the place is high, the last one cut
    Grow   ///< as many lines as it needs; what stands in its way moves down, and the section grows with it
};

/// One thing on the paper. Made by label(), field() and so on; the calls behind them change its look:
/// `field("Peso", {120, 0, 14, 4}).right()`.
struct Element {
    enum class Kind {
        Label,     ///< a fixed text, which may be set before showing
        Field,     ///< the value of a column in the row; in a group's header or footer, of its first row
        Sum,       ///< a column added up: over the group in its footer, over all rows elsewhere
        PageText,  ///< a text with %p page, %P pages, %d date, %D date in words, %% a percent sign
        Image,     ///< a picture, by the key of its resource
        Line,      ///< a rule: horizontal, or upright where it is higher than wide
        Frame      ///< a rectangle, drawn before all else of its section
    };
    Kind kind = Kind::Label;
    QString name;    ///< by which a text is set
    QString source;  ///< the text, the column, or the key of the picture
    Box place;
    Align align = Align::Left;
    Fit fit = Fit::Cut;
    double size = 0;  ///< points; 0 is the report's own size
    bool isBold = false;
    bool isItalic = false;
    QString format;       ///< of a date: "HH:mm"; without one the runtime's text form
    double fill = 0;      ///< of a frame: from 0 (none) to 1 (black)
    double stroke = 0.2;  ///< of lines and frames; 0 draws no rule

    Element& right() { return with(&Element::align, Align::Right); }
    Element& centred() { return with(&Element::align, Align::Centre); }
    Element& wrapped() { return with(&Element::fit, Fit::Wrap); }
    Element& growing() { return with(&Element::fit, Fit::Grow); }
    Element& bold() { return with(&Element::isBold, true); }
    Element& italic() { return with(&Element::isItalic, true); }
    Element& points(double value) { return with(&Element::size, value); }
    Element& formatted(const QString& pattern) { return with(&Element::format, pattern); }
    Element& named(const QString& value) { return with(&Element::name, value); }
    Element& filled(double value) { return with(&Element::fill, value); }
    Element& ruled(double millimetres) { return with(&Element::stroke, millimetres); }

 private:
    template <typename T>
    Element& with(T Element::*member, const T& value) {
        this->*member = value;
        return *this;
    }
};

/// A label without a name cannot be set.
[[nodiscard]] Element label(const QString& text, Box place, const QString& name = QString());
/// Bears the column's name unless named() gives another.
[[nodiscard]] Element field(const QString& column, Box place);
[[nodiscard]] Element sum(const QString& column, Box place, const QString& name = QString());
[[nodiscard]] Element pageText(const QString& text, Box place);
[[nodiscard]] Element image(const QString& key, Box place, const QString& name = QString());
/// From the place's left and top, along its longer side.
[[nodiscard]] Element line(Box place);
[[nodiscard]] Element frame(Box place);

/// A strip across the page. Its own name serves readers alone ("HojCam_Detail").
struct Section {
    QString name;
    double height = 0;  ///< millimetres; growing texts add to it. A section of no height takes no room
    std::vector<Element> elements;
};

struct ExportFormat {
    enum class Kind { Html };
    QString key;
    Kind kind = Kind::Html;
    QString fileFormatText;  ///< "HojaCampo(*.htm)"
    QString fileFilter;      ///< "*.HTM"
    /// Holds the marks <!--MSDBRPT_Template_Title--> and <!--MSDBRPT_Template_Body-->.
    QString templateText;
};

enum class Orientation { Portrait, Landscape };

/// A report as data: what stands where, which columns it shows, how its rows are grouped. A4 paper.
struct Report {
    QString name;   ///< "repHojCam"
    QString title;  ///< of the window and of an exported file
    Orientation orientation = Orientation::Portrait;
    double fontSize = 9;  ///< points
    double margin = 12;   ///< millimetres, on all four sides
    /// Each second row on a light ground, so that the eye keeps its line.
    bool banded = false;
    /// Rows with the same values in these columns make a group, wherever they stand; groups come in the order
    /// in which their first rows do. None: no groups.
    QStringList groupBy;

    Section reportHeader;  ///< once, above the first page's header
    Section pageHeader;    ///< on each page
    Section groupHeader;   ///< before the rows of a group; never alone at a page's foot
    /// In place of the header on the pages on which a group goes on.
    Section groupContinued;
    /// The titles of the columns under the group's header, and again on each page on which the group goes on.
    Section groupTitles;
    Section detail;  ///< for each row
    Section groupFooter;
    Section reportFooter;  ///< once, behind the last row
    Section pageFooter;    ///< at the foot of each page

    std::vector<ExportFormat> exportFormats;

    /// Millimetres between the margins: 186 x 273 upright, 273 x 186 lying.
    [[nodiscard]] double paperWidth() const { return orientation == Orientation::Portrait ? 210 : 297; }
    [[nodiscard]] double paperHeight() const { return orientation == Orientation::Portrait ? 297 : 210; }
    [[nodiscard]] double width() const { return paperWidth() - 2 * margin; }

    /// The first element of that name, in the order of the sections above; null when there is none.
    [[nodiscard]] Element* find(const QString& element);
    /// All sections, in the order above.
    [[nodiscard]] std::vector<Section*> sections();
};

}  // namespace tarmel::report
