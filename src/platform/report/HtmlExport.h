#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <vector>

#include "platform/report/Document.h"

class QIODevice;

namespace tarmel::report {

/// Writes a report as a file for browsers, a little at a time: the format's template with the report's title
/// and body in the places of its marks. Groups, titles, rows and sums become tables. Letters beyond ASCII are
/// written as character references, so that the file reads the same whatever code page it is taken for.
class HtmlExport {
 public:
    /// `picture` gives the SVG of a key. Document and device must outlive it.
    HtmlExport(Document& document, const ExportFormat& format, QIODevice& out,
               std::function<QByteArray(const QString&)> picture);
    ~HtmlExport();

    /// Writes on; false when all is written. RuntimeError 61 when the device takes no more.
    bool step();
    /// What is written of all there is to write, from 0 to 1.
    [[nodiscard]] double progress() const;

 private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace tarmel::report
