#pragma once

#include <QString>
#include <QStringList>
#include <atomic>
#include <chrono>
#include <thread>

/// Looks into a database file that no connection has open. Neither the file nor its log is written to,
/// whatever is found: what is damaged stays as it is for whoever can still save something from it.
///
/// Only damage is told here. What else can stand in the way (locked, read-only, no permission) is said by
/// Connection::Open.
namespace tarmel::ado {

/// Whether the last program that had the file open closed it: then nothing of its own is left beside it.
[[nodiscard]] bool wasClosed(const QString& path);

/// A log beside a file that works without one belongs to another file that lay here before, and must not be
/// applied to this one.
[[nodiscard]] bool hasStrayLog(const QString& path);

/// What a look that does not depend on the file's size finds.
struct Glance {
    QString damage;      ///< what is wrong with the file, in the user's words; empty when nothing was found
    QStringList tables;  ///< of a file without damage that could be read
    bool readable = false;
};
/// Header, length, catalogue, and the beginning of each table.
[[nodiscard]] Glance glanceAt(const QString& path);

/// Every page, row and index, in a thread of its own, so that whoever waits can paint.
class WholeCheck {
 public:
    enum class Then {
        Nothing,
        Sync  ///< a good file is made to last on the disk
    };
    explicit WholeCheck(const QString& path, Then then = Then::Nothing);
    /// Gives up what is not finished.
    ~WholeCheck();
    WholeCheck(const WholeCheck&) = delete;
    WholeCheck& operator=(const WholeCheck&) = delete;

    /// Waits for the end, for so long at most; true when the check has ended.
    [[nodiscard]] bool finished(std::chrono::milliseconds wait = {});
    [[nodiscard]] int percent() const { return percent_; }
    /// Of a finished check: as in Glance. Rows that break a rule of their table are no damage of the file.
    [[nodiscard]] const QString& damage() const { return damage_; }
    /// Everything was looked at and is in order. A file that could not be looked at is neither damaged nor
    /// good.
    [[nodiscard]] bool isGood() const { return good_; }

 private:
    void run(const QString& path, Then then);
    void readThrough(const QString& path);
    void checkAll(const QString& path);

    QString damage_;
    bool good_ = false;
    std::atomic<int> percent_ = 0;
    std::atomic<bool> stop_ = false;
    std::atomic<bool> done_ = false;
    std::thread thread_;
};

/// The same for those who can wait.
[[nodiscard]] bool isWhole(const QString& path);

}  // namespace tarmel::ado
