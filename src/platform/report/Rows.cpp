#include "platform/report/Rows.h"

#include "platform/basic/RuntimeError.h"

namespace tarmel::report {

int RecordsetRows::columnIndex(const QString& name) const {
    if (!recordset_.IsOpen()) return -1;
    try {
        return recordset_.FieldIndex(name);
    } catch (const basic::RuntimeError&) {
        return -1;
    }
}

int RecordsetRows::read(int rows) {
    if (!recordset_.IsOpen()) return 0;
    while (read_ < rows && recordset_.Seek(read_))
        ++read_;
    return read_;
}

basic::Variant RecordsetRows::value(int row, int column) const {
    recordset_.Seek(row);
    return recordset_.Value(column);
}

}  // namespace tarmel::report
