#include "platform/report/Data.h"

#include <QElapsedTimer>

#include "platform/basic/RuntimeError.h"
#include "platform/basic/Text.h"

namespace tarmel::report {

using basic::Variant;

namespace {

constexpr int kStep = 200;  // rows between two looks at the clock

void appendNumber(QByteArray& key, char kind, const void* number) {
    key.append(kind);
    key.append(static_cast<const char*>(number), 8);
}

/// Values that differ give different bytes, kind for kind.
void appendTo(QByteArray& key, const Variant& value) {
    if (value.isText()) {
        const QString& text = std::get<QString>(value.raw());
        const auto length = static_cast<qint64>(text.size());
        appendNumber(key, 't', &length);
        key.append(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
    } else if (value.isNull() || value.isEmpty()) {
        key.append('0');
    } else {
        // Whole numbers of the database stay exact as doubles.
        const double number = value.isDate() ? value.toDate().serial() : value.toDouble();
        appendNumber(key, value.isDate() ? 'd' : 'n', &number);
    }
}

/// Adds whole numbers exactly, and anything else that is a number.
class Adder {
 public:
    void add(const Variant& value) {
        if (value.isWhole()) {
            whole_ += std::get<qint64>(value.raw());
        } else if (value.isDouble()) {
            broken_ += value.toDouble();
        } else {
            return;
        }
        any_ = true;
    }
    [[nodiscard]] QString text() const {
        if (!any_) return {};
        return broken_ == 0 ? basic::CStr(whole_) : basic::CStr(static_cast<double>(whole_) + broken_);
    }

 private:
    qint64 whole_ = 0;
    double broken_ = 0;
    bool any_ = false;
};

}  // namespace

Data::Data(const QStringList& groupBy, std::unique_ptr<Rows> rows) : rows_(std::move(rows)) {
    isRead_ = !rows_;
    for (const QString& column : groupBy)
        keyColumns_.push_back(columnIndex(column));
}

bool Data::readFor(int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    do {
        readRows(read_ + kStep);
    } while (!isRead_ && clock.elapsed() < milliseconds);
    return isRead_;
}

void Data::readAll() {
    while (!isRead_)
        readRows(read_ + kStep);
}

void Data::readRows(int rows) {
    if (isRead_ || rows <= read_) return;
    int there = read_;
    try {
        there = rows_->read(rows);
    } catch (const basic::RuntimeError&) {
        // What cannot be read ends the rows: a report shows what there is.
        isRead_ = true;
    }
    for (; read_ < there; ++read_)
        gather(read_);
    if (there < rows) isRead_ = true;
}

void Data::gather(int row) {
    if (keyColumns_.empty()) {
        if (groups_.empty()) groups_.emplace_back();
        groups_.front().push_back(row);
        return;
    }
    // The rows of a group mostly follow each other.
    QByteArray key = keyOf(row);
    if (lastGroup_ < 0 || key != lastKey_) {
        const auto known = byKey_.constFind(key);
        lastGroup_ = known != byKey_.constEnd() ? *known : groupCount();
        if (lastGroup_ == groupCount()) {
            groups_.emplace_back();
            byKey_.insert(key, lastGroup_);
        }
        lastKey_ = std::move(key);
    }
    groups_[static_cast<std::size_t>(lastGroup_)].push_back(row);
}

QByteArray Data::keyOf(int row) const {
    QByteArray key;
    for (const int column : keyColumns_) {
        if (column >= 0) appendTo(key, rows_->value(row, column));
    }
    return key;
}

int Data::columnIndex(const QString& column) const {
    if (!rows_) return -1;
    const auto known = columns_.constFind(column);
    if (known != columns_.constEnd()) return *known;
    return *columns_.insert(column, rows_->columnIndex(column));
}

QString Data::text(const QString& column, const QString& format, int row) const {
    const int index = columnIndex(column);
    if (index < 0 || row < 0) return {};
    const Variant value = rows_->value(row, index);
    if (!format.isEmpty() && value.isDate()) return basic::Format(value.toDate(), format);
    return value.joined();
}

QString Data::sum(const QString& column, int group) const {
    const int index = columnIndex(column);
    if (index < 0) return {};
    Adder adder;
    if (group >= 0) {
        for (const int row : groupRows(group))
            adder.add(rows_->value(row, index));
        return adder.text();
    }
    Sum& total = totals_[column];
    if (total.rows != read_) {
        for (int row = 0; row < read_; ++row)
            adder.add(rows_->value(row, index));
        total = {read_, adder.text()};
    }
    return total.text;
}

}  // namespace tarmel::report
