#include <QElapsedTimer>
#include <QLineEdit>

#include "Banco.h"

namespace tarmel::desktop {
namespace {

constexpr int kPause = 700;  // milliseconds without input
constexpr int kPieces = 20;

class PausasTest : public DesktopTest {
 protected:
    PausasTest() {
        sinceKey_.start();
        escritorio.WhenIdle([this] {
            EXPECT_GE(sinceKey_.elapsed(), kPause) << "the user types";
            EXPECT_FALSE(commandRuns_);
            return ++pieces_ < kPieces;
        });
    }
    void typeFor(int milliseconds) {
        QElapsedTimer clock;
        for (clock.start(); clock.elapsed() < milliseconds; QTest::qWait(100)) {
            sinceKey_.start();
            QTest::keyClick(&line_, Qt::Key_A);
        }
    }
    void runCommand(int milliseconds) {
        commandRuns_ = true;
        escritorio.SetPointer(forms::Pointer::Hourglass);
        QTest::qWait(milliseconds);
        escritorio.SetPointer(forms::Pointer::Default);
        commandRuns_ = false;
    }
    QLineEdit line_;
    QElapsedTimer sinceKey_;
    bool commandRuns_ = false;
    int pieces_ = 0;
};

TEST_F(PausasTest, WorkIsDoneOnlyWhileTheUserPausesAndNoCommandRuns) {
    typeFor(4000);  // longer than the first look takes
    runCommand(2 * kPause);
    ASSERT_TRUE(QTest::qWaitFor([this] { return pieces_ > 0; }, 10 * kPause));
    typeFor(kPause);
    EXPECT_TRUE(QTest::qWaitFor([this] { return pieces_ == kPieces; }, 10 * kPause));
    QTest::qWait(kPause);
    EXPECT_EQ(pieces_, kPieces) << "nothing is left";
}

}  // namespace
}  // namespace tarmel::desktop
