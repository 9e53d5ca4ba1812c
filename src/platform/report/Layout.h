#pragma once

#include <QString>
#include <vector>

#include "platform/report/Data.h"
#include "platform/report/Document.h"

namespace tarmel::report {

/// Which page holds what, and where it stands there. The breaks are found without looking at the rows where
/// these are of one height, which takes a moment for any number of them; only a page that is asked for is
/// filled.
class Layout {
 public:
    /// All three must outlive it. What they are when it is made is laid out.
    Layout(const Report& report, const Data& data, const TextMeasure& measure);

    [[nodiscard]] int pageCount() const { return static_cast<int>(pages_.size()); }
    /// From 0; `pages` is what stands for their number.
    [[nodiscard]] Page page(int index, const QString& pages) const;
    /// The texts of a page, uncut, a line for each line of print.
    [[nodiscard]] QStringList lines(int index, const QString& pages) const;

 private:
    enum class Part {
        ReportHeader,
        PageHeader,
        GroupHeader,
        GroupContinued,
        GroupTitles,
        Rows,
        GroupFooter,
        ReportFooter
    };
    /// A section on a page, or rows that follow each other.
    struct Run {
        Part part;
        int group = -1;
        int first = 0;  ///< of the group's rows
        int count = 0;
        double top = 0;
    };
    using Runs = std::vector<Run>;
    /// What a section's elements show.
    struct Context {
        int row = -1;
        int group = -1;  ///< whose sums are meant; -1: those of all rows
        QString page, pages;
    };

    /// What growing texts do to an element.
    struct Move {
        double down = 0;
        double growth = 0;
    };

    [[nodiscard]] const Section& sectionOf(Part part) const;
    [[nodiscard]] static bool isOfGroup(Part part);
    [[nodiscard]] double body() const;
    [[nodiscard]] double bottom() const;
    [[nodiscard]] bool isGrouped() const { return !report_.groupBy.isEmpty(); }

    // --- Breaks
    void newPage();
    void put(Part part, int group);
    void putGroup(int group, bool isLast);
    void putRows(int group, double tail);
    [[nodiscard]] bool fits(double height) const;
    [[nodiscard]] bool isFresh() const { return y_ <= freshY_; }
    [[nodiscard]] double heightOf(Part part, int group) const;
    [[nodiscard]] double heightOfRows(int group, int first, int count) const;
    [[nodiscard]] int rowsThatFit(int group, int first) const;

    // --- Sections
    [[nodiscard]] Context contextOf(const Run& run, int row) const;
    [[nodiscard]] double heightOf(const Section& section, const Context& context) const;
    [[nodiscard]] std::vector<Move> moves(const Section& section, const Context& context) const;
    [[nodiscard]] QString textOf(const Element& element, const Context& context) const;
    [[nodiscard]] Font fontOf(const Element& element) const;
    [[nodiscard]] QStringList linesOf(const Element& element, const QString& text, double height) const;
    void place(const Section& section, const Context& context, double top, std::vector<Item>& items) const;
    template <typename Visit>
    void forEachSection(int index, const QString& pages, Visit&& visit) const;

    const Report& report_;
    const Data& data_;
    const TextMeasure& measure_;
    bool rowsGrow_ = false;
    std::vector<Runs> pages_;
    double y_ = 0;
    double freshY_ = 0;  ///< below a page's header: a new page begins here
};

/// A page text with its codes put in: %p, %P, %d, %D, %%.
[[nodiscard]] QString withPageCodes(const QString& text, const QString& page, const QString& pages);

}  // namespace tarmel::report
