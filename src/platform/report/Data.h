#pragma once

#include <QByteArray>
#include <QHash>
#include <memory>
#include <vector>

#include "platform/report/Report.h"
#include "platform/report/Rows.h"

namespace tarmel::report {

/// The rows of a report as far as they have been read, gathered into their groups. A report without groups
/// has one, or none while there is no row.
class Data {
 public:
    Data(const QStringList& groupBy, std::unique_ptr<Rows> rows);

    /// Reads on for about so long; true when all rows are there.
    bool readFor(int milliseconds);
    void readAll();
    /// Reads until so many rows are there, if there are so many.
    void readRows(int rows);
    [[nodiscard]] bool isRead() const { return isRead_; }
    [[nodiscard]] int rowsRead() const { return read_; }

    [[nodiscard]] int groupCount() const { return static_cast<int>(groups_.size()); }
    [[nodiscard]] const std::vector<int>& groupRows(int group) const {
        return groups_[static_cast<std::size_t>(group)];
    }
    /// As the report prints it.
    [[nodiscard]] QString text(const QString& column, const QString& format, int row) const;
    /// Over a group, or over all rows that are there (-1); "" where no row has a number there.
    [[nodiscard]] QString sum(const QString& column, int group) const;

 private:
    [[nodiscard]] int columnIndex(const QString& column) const;
    void gather(int row);
    [[nodiscard]] QByteArray keyOf(int row) const;

    std::unique_ptr<Rows> rows_;
    std::vector<int> keyColumns_;
    int read_ = 0;
    bool isRead_ = false;
    std::vector<std::vector<int>> groups_;
    QHash<QByteArray, int> byKey_;
    QByteArray lastKey_;
    int lastGroup_ = -1;
    mutable QHash<QString, int> columns_;
    struct Sum {
        int rows = -1;
        QString text;
    };
    mutable QHash<QString, Sum> totals_;
};

}  // namespace tarmel::report
