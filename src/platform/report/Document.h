#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

#include "platform/basic/Date.h"
#include "platform/report/Report.h"
#include "platform/report/Rows.h"
#include "platform/report/TextMeasure.h"

namespace tarmel::report {

/// Something on a page, ready to be painted.
struct Item {
    Element::Kind kind = Element::Kind::Label;
    Box place;          ///< on the paper
    QStringList lines;  ///< of a text, none wider than the place; of a picture, its key
    Font font;
    Align align = Align::Left;
    double fill = 0;
    double stroke = 0;
};

struct Page {
    std::vector<Item> items;
};

/// A report that is being shown, printed or exported: its rows, and their pages.
///
/// Rows are read on a little at a time and a page is laid out when it is looked at, so that a report of any
/// length shows its first page at once. What asks for the last page, or for how many there are, reads to the
/// end.
class Document {
 public:
    /// No rows at all (null) serves where the data could not be read: the report opens empty.
    explicit Document(Report report, std::unique_ptr<Rows> rows = nullptr);
    ~Document();
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    [[nodiscard]] const Report& report() const;
    /// Sets a label's text. A name that no label bears is passed over.
    void SetText(const QString& element, const QString& text);
    /// The text of a label, "" when there is none of that name.
    [[nodiscard]] QString Text(const QString& element) const;

    // --- Reading
    /// Reads on for about so long; true when all rows are there. Errors of the data end the rows.
    bool read(int milliseconds);
    [[nodiscard]] bool isRead() const;
    /// Reads one row only.
    [[nodiscard]] bool HasRows();
    /// Rows that are there.
    [[nodiscard]] int rowsRead() const;
    /// All rows.
    [[nodiscard]] int rowCount();
    [[nodiscard]] int groupCount();

    // --- Layout
    /// Whoever paints brings the measure of his fonts, before the first page is made.
    void setMeasure(std::shared_ptr<const TextMeasure> measure);
    /// All pages; at least one.
    [[nodiscard]] int pageCount();
    /// Pages of the rows that are there.
    [[nodiscard]] int pagesSoFar();
    /// From 0; reads on until the page is full. While rows are still missing, %P stands as "…".
    [[nodiscard]] Page page(int index);
    /// The words of all pages, in reading order, one line for each line of print.
    [[nodiscard]] QString text();
    /// The value that an element shows for a row, uncut.
    [[nodiscard]] QString valueText(const Element& element, int row) const;
    /// The rows of a group, in the order in which they came, and the sum of a column over them; "" over none.
    [[nodiscard]] const std::vector<int>& groupRows(int group);
    [[nodiscard]] QString groupSum(const QString& column, int group);
    [[nodiscard]] QString totalSum(const QString& column);

    // --- Life
    /// Printing and exporting that goes on. The window stays open until it is 0.
    [[nodiscard]] int AsynchronousOperations() const;
    class Operation {
     public:
        explicit Operation(Document& document);
        ~Operation();
        Operation(const Operation&) = delete;
        Operation& operator=(const Operation&) = delete;

     private:
        Document& document_;
    };
    /// Asked before the window closes; returns when it may.
    std::function<void(Document&)> QueryClose;
    /// Runs QueryClose: the window that shows it is about to close.
    void close();

 private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace tarmel::report
