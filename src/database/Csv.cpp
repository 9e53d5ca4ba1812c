#include "database/Csv.h"

#include <QFile>
#include <QStringDecoder>

#include "platform/basic/RuntimeError.h"

namespace tarmel {

namespace {

using Row = std::vector<QString>;

/// Goes through the text once; a quoted field may hold commas, doubled quotes and line ends.
class CsvParser {
 public:
    CsvParser(const QString& text, const QString& name) : text_(text), name_(name) {}

    std::vector<Row> parse() {
        std::vector<Row> rows;
        while (pos_ < text_.size()) {
            const int firstLine = line_;
            Row row = readRow();
            if (!rows.empty() && row.size() != rows.front().size()) {
                fail(firstLine,
                     QStringLiteral("%1 campos en vez de %2").arg(row.size()).arg(rows.front().size()));
            }
            rows.push_back(std::move(row));
        }
        return rows;
    }

 private:
    Row readRow() {
        Row row;
        do {
            row.push_back(readField());
        } while (take(u','));
        if (pos_ < text_.size() && !takeLineEnd()) fail(line_, QStringLiteral("texto tras las comillas"));
        return row;
    }

    QString readField() {
        if (take(u'"')) return readQuoted();
        const qsizetype start = pos_;
        while (pos_ < text_.size() && !isFieldEnd(text_[pos_])) {
            if (text_[pos_] == u'"') fail(line_, QStringLiteral("comillas dentro de un campo"));
            ++pos_;
        }
        return text_.mid(start, pos_ - start);
    }

    QString readQuoted() {
        const int firstLine = line_;
        QString field;
        for (;; ++pos_) {
            if (pos_ >= text_.size()) fail(firstLine, QStringLiteral("comillas sin cerrar"));
            if (text_[pos_] == u'"') {
                ++pos_;
                if (pos_ >= text_.size() || text_[pos_] != u'"') return field;
            }
            if (text_[pos_] == u'\n') ++line_;
            field += text_[pos_];
        }
    }

    static bool isFieldEnd(QChar c) { return c == u',' || c == u'\n' || c == u'\r'; }

    bool take(QChar c) {
        if (pos_ >= text_.size() || text_[pos_] != c) return false;
        ++pos_;
        return true;
    }

    bool takeLineEnd() {
        const bool carriageReturn = take(u'\r');
        if (!take(u'\n') && !carriageReturn) return false;
        ++line_;
        return true;
    }

    [[noreturn]] void fail(int line, const QString& what) const {
        throw basic::RuntimeError(basic::error::InvalidCall,
                                  QStringLiteral("%1, línea %2: %3").arg(name_).arg(line).arg(what),
                                  QStringLiteral("Tarmel"));
    }

    const QString& text_;
    const QString& name_;
    qsizetype pos_ = 0;
    int line_ = 1;
};

}  // namespace

std::vector<std::vector<QString>> analizarCsv(const QString& text, const QString& name) {
    return CsvParser(text, name).parse();
}

std::vector<std::vector<QString>> leerCsv(const QString& path) {
    QFile file(path);
    if (!file.exists()) throw basic::RuntimeError(basic::error::FileNotFound);
    if (!file.open(QIODevice::ReadOnly)) throw basic::RuntimeError(basic::error::FileAccess);
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) throw basic::RuntimeError(basic::error::FileAccess);

    // Stateless, so that a character cut off at the end of the file counts as an error too.
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decode(bytes);
    if (decode.hasError()) {
        throw basic::RuntimeError(basic::error::InvalidCall, QStringLiteral("%1: no es UTF-8").arg(path),
                                  QStringLiteral("Tarmel"));
    }
    return analizarCsv(text, path);
}

}  // namespace tarmel
