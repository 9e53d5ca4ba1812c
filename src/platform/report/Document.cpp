#include "platform/report/Document.h"

#include <algorithm>
#include <optional>

#include "platform/report/Data.h"
#include "platform/report/Layout.h"

namespace tarmel::report {

namespace {
constexpr int kFirstRows = 200;  // more than a page of them
}

struct Document::State {
    State(Report&& made, std::unique_ptr<Rows> rows)
        : report(std::move(made)), data(report.groupBy, std::move(rows)) {}

    /// Of the rows that are there now.
    const Layout& layout() {
        if (!pages || laidOutRows != data.rowsRead()) {
            pages.emplace(report, data, *measure);
            laidOutRows = data.rowsRead();
        }
        return *pages;
    }
    [[nodiscard]] QString pagesText() {
        return data.isRead() ? QString::number(layout().pageCount()) : QStringLiteral("…");
    }

    Report report;
    Data data;
    std::shared_ptr<const TextMeasure> measure = std::make_shared<TableMeasure>();
    std::optional<Layout> pages;
    int laidOutRows = -1;
    int operations = 0;
};

Document::Document(Report report, std::unique_ptr<Rows> rows)
    : state_(std::make_unique<State>(std::move(report), std::move(rows))) {}

Document::~Document() = default;

const Report& Document::report() const {
    return state_->report;
}

void Document::SetText(const QString& element, const QString& text) {
    Element* found = state_->report.find(element);
    if (!found || found->kind != Element::Kind::Label) return;
    found->source = text;
    state_->pages.reset();
}

QString Document::Text(const QString& element) const {
    const Element* found = state_->report.find(element);
    return found && found->kind == Element::Kind::Label ? found->source : QString();
}

// --- Reading

bool Document::read(int milliseconds) {
    return state_->data.readFor(milliseconds);
}

bool Document::isRead() const {
    return state_->data.isRead();
}

bool Document::HasRows() {
    state_->data.readRows(1);
    return rowsRead() > 0;
}

int Document::rowsRead() const {
    return state_->data.rowsRead();
}

int Document::rowCount() {
    state_->data.readAll();
    return rowsRead();
}

int Document::groupCount() {
    state_->data.readAll();
    return state_->data.groupCount();
}

const std::vector<int>& Document::groupRows(int group) {
    return state_->data.groupRows(group);
}

QString Document::valueText(const Element& element, int row) const {
    return state_->data.text(element.source, element.format, row);
}

QString Document::groupSum(const QString& column, int group) {
    state_->data.readAll();
    return state_->data.sum(column, group);
}

QString Document::totalSum(const QString& column) {
    state_->data.readAll();
    return state_->data.sum(column, -1);
}

// --- Layout

void Document::setMeasure(std::shared_ptr<const TextMeasure> measure) {
    state_->measure = std::move(measure);
    state_->pages.reset();
}

int Document::pageCount() {
    state_->data.readAll();
    return state_->layout().pageCount();
}

int Document::pagesSoFar() {
    return state_->layout().pageCount();
}

Page Document::page(int index) {
    // A page is whole once another one follows it.
    while (!isRead() && pagesSoFar() <= index + 1)
        state_->data.readRows(std::max(kFirstRows, 2 * rowsRead()));
    const QString pages = state_->pagesText();
    return state_->layout().page(index, pages);
}

QString Document::text() {
    QStringList all;
    const int pages = pageCount();
    for (int i = 0; i < pages; ++i)
        all << state_->layout().lines(i, QString::number(pages));
    return all.join(u'\n');
}

// --- Life

void Document::close() {
    if (QueryClose) QueryClose(*this);
}

int Document::AsynchronousOperations() const {
    return state_->operations;
}

Document::Operation::Operation(Document& document) : document_(document) {
    ++document_.state_->operations;
}

Document::Operation::~Operation() {
    --document_.state_->operations;
}

}  // namespace tarmel::report
