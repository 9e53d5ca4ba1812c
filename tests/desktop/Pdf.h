#pragma once

#include <gtest/gtest.h>

#include <QProcess>
#include <QRectF>
#include <QSet>
#include <QXmlStreamReader>
#include <algorithm>
#include <bit>
#include <vector>

namespace tarmel::desktop {

/// A PDF as another program reads it: words with their boxes, page by page, in points.
class Pdf {
 public:
    struct Word {
        QString text;
        QRectF box;
    };
    struct Page {
        QSizeF size;
        std::vector<Word> words;
    };

    explicit Pdf(const QString& file) : file_(file) {
        QXmlStreamReader reader(
            run(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), file, QStringLiteral("-")}));
        while (!reader.atEnd()) {
            reader.readNext();
            if (!reader.isStartElement()) continue;
            const auto number = [&](const char* name) {
                return reader.attributes().value(QLatin1String(name)).toDouble();
            };
            if (reader.name() == u"page") pages_.push_back({{number("width"), number("height")}, {}});
            if (reader.name() != u"word") continue;
            const QRectF box(QPointF(number("xMin"), number("yMin")),
                             QPointF(number("xMax"), number("yMax")));
            pages_.back().words.push_back({reader.readElementText(), box});
        }
        EXPECT_FALSE(pages_.empty()) << "no pages in " << file.toStdString();
    }

    [[nodiscard]] const std::vector<Page>& pages() const { return pages_; }

    [[nodiscard]] QSet<QString> words() const {
        QSet<QString> all;
        for (const Page& page : pages_) {
            for (const Word& word : page.words)
                all.insert(word.text);
        }
        return all;
    }

    /// No word lies on another one, and none leaves the paper.
    void expectTidy() const {
        constexpr double kTouch = 0.75;  // points: the boxes of letters reach beyond their ink
        for (const Page& page : pages_) {
            const QRectF paper(QPointF(), page.size);
            std::vector<Word> words = page.words;
            std::sort(words.begin(), words.end(),
                      [](const Word& a, const Word& b) { return a.box.top() < b.box.top(); });
            for (std::size_t i = 0; i < words.size(); ++i) {
                EXPECT_TRUE(paper.contains(words[i].box))
                    << words[i].text.toStdString() << " leaves the page";
                for (std::size_t k = i + 1; k < words.size() && words[k].box.top() < words[i].box.bottom();
                     ++k) {
                    const QRectF shared = words[i].box & words[k].box;
                    // Lines stand closer than the tallest letters of the face.
                    const bool overlaps =
                        shared.width() > kTouch && shared.height() > words[i].box.height() / 3;
                    EXPECT_FALSE(overlaps)
                        << words[i].text.toStdString() << " lies on " << words[k].text.toStdString();
                }
            }
        }
    }

    /// All words of the text are there, or those in front of a cut that can be seen.
    void expectText(const QString& text) {
        if (known_.isEmpty()) known_ = words();
        const QStringList all = text.split(QChar(u' '), Qt::SkipEmptyParts);
        for (qsizetype i = 0; i < all.size(); ++i) {
            if (known_.contains(all[i])) continue;
            // Cut inside this word or inside or behind one before it.
            const QStringList before = all.mid(0, i + 1);
            const bool isCut = std::any_of(known_.begin(), known_.end(), [&](const QString& word) {
                return word.endsWith(QChar(u'…')) &&
                       std::any_of(before.begin(), before.end(),
                                   [&](const QString& whole) { return whole.startsWith(word.chopped(1)); });
            });
            EXPECT_TRUE(isCut) << '"' << text.toStdString() << "\" has lost " << all[i].toStdString();
            return;
        }
    }

    /// How much of a page is dark, of 1, as a printer without colours prints it.
    [[nodiscard]] double darkness(int page) const {
        const QString number = QString::number(page);
        const QByteArray picture = run(QStringLiteral("pdftoppm"),
                                       {QStringLiteral("-r"), QStringLiteral("72"), QStringLiteral("-mono"),
                                        QStringLiteral("-f"), number, QStringLiteral("-l"), number, file_});
        // "P4", width and height, then a bit for each point: 1 is black.
        const qsizetype size = picture.indexOf('\n', picture.indexOf('\n') + 1) + 1;
        double dark = 0;
        for (const char byte : picture.mid(size))
            dark += std::popcount(static_cast<unsigned char>(byte));
        return dark / (8.0 * static_cast<double>(picture.size() - size));
    }

 private:
    static QByteArray run(const QString& program, const QStringList& arguments) {
        QProcess process;
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished(60'000) && process.exitCode() == 0)
            << program.toStdString() << ": " << process.readAllStandardError().toStdString();
        return process.readAllStandardOutput();
    }

    QString file_;
    std::vector<Page> pages_;
    QSet<QString> known_;
};

}  // namespace tarmel::desktop
