#include "loggingwindow.h"
#include "ui/frmsplash.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QMessageBox>

#include <cerrno>
#include <optional>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

// Looks whether the splash window had been painted, and what was pending once it was shown had happened, when
// the first message box appeared. Some platforms paint a window already while it is being shown.
class SplashWatch : public QObject
{
public:
    SplashWatch() { qApp->installEventFilter(this); }

    [[nodiscard]] std::optional<bool> paintedBeforeTheFirstBox() const { return m_before; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::ShowToParent && qobject_cast<frmSplash *>(watched)) {
            // The last that happens while a window is being shown.
            QMetaObject::invokeMethod(
                this, [this] { m_pendingHappened = true; }, Qt::QueuedConnection);
        } else if (event->type() == QEvent::Paint && qobject_cast<frmSplash *>(watched)) {
            m_painted = true;
        } else if (event->type() == QEvent::Show && qobject_cast<QMessageBox *>(watched) && !m_before) {
            m_before = m_painted && m_pendingHappened;
        }
        return false;
    }

private:
    bool m_painted = false;
    bool m_pendingHappened = false;
    std::optional<bool> m_before;
};

// What had been loaded when a message box stood.
struct Loaded
{
    int rows = 0;
    int transmitters = 0;
    int countries = 0;
    QString link;
};

Loaded loadedAtTheFirstBox(MainWindow &window, const QByteArray &log, const QByteArray &transmitters)
{
    Loaded loaded;
    window.answers.doing([&](QWidget *box) {
        loaded.rows = window.grid().rows() - 1;
        loaded.transmitters = window.form().transmitters().count();
        loaded.countries = window.find<QComboBox>("Combo3")->count();
        if (const auto *splash = window.form().findChild<frmSplash *>()) {
            const auto *link = splash->findChild<QLabel *>(u"Label2"_s);
            loaded.link = link->isVisible() ? link->text() : QString();
        }
        QTest::keyClick(box, Qt::Key_Escape);
    });
    window.start(log, transmitters, "D\r\nE\r\n");
    return loaded;
}

} // namespace

class TestLoading : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSplashIsPaintedBeforeTheFirstFileIsTouched();
    void theSplashIsPaintedBeforeTheLogIsRead();
    void theListsAreLoadedAfterTheLog();
    void theCountriesAreLoadedAfterTheTransmitters();
    void theSplashShowsTheLinkOfTheConfiguration();
};

void TestLoading::theSplashIsPaintedBeforeTheFirstFileIsTouched()
{
    const SplashWatch watch;
    MainWindow window;
    window.calls.failOpen = EACCES;
    window.start();
    const QStringList texts = window.answers.takeTexts();
    QVERIFY(!texts.isEmpty());
    QVERIFY2(texts.first().startsWith(u"Run-time error: Permission denied\n"_s), qPrintable(texts.first()));
    QCOMPARE(watch.paintedBeforeTheFirstBox(), std::optional(true));
}

void TestLoading::theSplashIsPaintedBeforeTheLogIsRead()
{
    const SplashWatch watch;
    MainWindow window;
    window.start(oneEntry + "a line that is broken\r\n");
    QCOMPARE(window.answers.takeTexts().size(), 1);
    QCOMPARE(watch.paintedBeforeTheFirstBox(), std::optional(true));
}

void TestLoading::theListsAreLoadedAfterTheLog()
{
    MainWindow window;
    const Loaded loaded = loadedAtTheFirstBox(window, oneEntry + "a line that is broken\r\n", oneTransmitter);
    QCOMPARE(window.answers.takeTexts().size(), 1);
    QCOMPARE(loaded.transmitters, 0);
    QCOMPARE(loaded.countries, 0);
    QCOMPARE(window.grid().rows(), 2);
    QCOMPARE(window.form().transmitters().count(), 1);
    QCOMPARE(window.find<QComboBox>("Combo3")->count(), 2);
}

void TestLoading::theCountriesAreLoadedAfterTheTransmitters()
{
    MainWindow window;
    const Loaded loaded = loadedAtTheFirstBox(window, oneEntry, oneTransmitter + "a line that is broken\r\n");
    QCOMPARE(window.answers.takeTexts().size(), 1);
    QCOMPARE(loaded.rows, 1);
    QCOMPARE(loaded.transmitters, 1);
    QCOMPARE(loaded.countries, 0);
    QCOMPARE(window.find<QComboBox>("Combo3")->count(), 2);
}

void TestLoading::theSplashShowsTheLinkOfTheConfiguration()
{
    MainWindow window;
    window.directory.write(u"LOGBOOK.INI"_s, "PROPAGATION_URL=http://127.0.0.1/muf\r\n");
    const Loaded loaded = loadedAtTheFirstBox(window, oneEntry + "a line that is broken\r\n", {});
    QCOMPARE(window.answers.takeTexts().size(), 1);
    QCOMPARE(loaded.link, u"http://127.0.0.1/muf"_s);
}

QTEST_MAIN(TestLoading)
#include "tst_loading.moc"
