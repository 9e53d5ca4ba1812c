#pragma once

#include <QStringList>
#include <algorithm>
#include <stdexcept>
#include <vector>

#include "platform/report/Rows.h"

namespace tarmel::report {

/// Rows that a test lays out; counts what is asked of them.
class ListRows final : public Rows {
 public:
    ListRows(QStringList columns, std::vector<std::vector<basic::Variant>> rows)
        : columns_(std::move(columns)), rows_(std::move(rows)) {}
    int columnIndex(const QString& name) const override { return static_cast<int>(columns_.indexOf(name)); }
    int read(int rows) override {
        return read_ = std::min(std::max(rows, read_), static_cast<int>(rows_.size()));
    }
    basic::Variant value(int row, int column) const override {
        if (row >= read_) throw std::out_of_range("row not read yet");
        ++asked;
        return rows_.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column));
    }
    mutable int asked = 0;

 private:
    QStringList columns_;
    std::vector<std::vector<basic::Variant>> rows_;
    int read_ = 0;
};

}  // namespace tarmel::report
