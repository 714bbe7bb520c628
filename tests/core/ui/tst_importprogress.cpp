#include "core/ui/importingwindow.h"

#include <QGuiApplication>
#include <QProgressBar>
#include <QThread>

#include <cerrno>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

// Notes each value of a progress bar that reaches the screen.
class PaintedValues : public QObject
{
public:
    explicit PaintedValues(QProgressBar &bar)
        : m_bar(bar)
    {
        bar.installEventFilter(this);
    }
    [[nodiscard]] const QList<int> &values() const { return m_values; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && (m_values.isEmpty() || m_values.last() != m_bar.value())) {
            m_values += m_bar.value();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QProgressBar &m_bar;
    QList<int> m_values;
};

} // namespace

class TestImportProgress : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QVERIFY(!QGuiApplication::overrideCursor()); }

    void theProgressBarShowsTheImport()
    {
        ImportingWindow window;
        for (int second = 0; second < 3; ++second) {
            window.spy(u"2010-06-12 18-22-0%1 111%1 A.txt"_s.arg(second));
        }
        window.start();
        auto *dialog = window.openSpy(u"12/06/2010"_s);
        const auto *bar = window.find<QProgressBar>("progress");
        QStringList shown;
        bool atStart = false;
        bool atEnd = true;
        connect(dialog, &importRDSSpy::progress, dialog,
            [&] { shown += bar->isVisible() ? bar->text() : u"hidden"_s; });
        connect(dialog, &importRDSSpy::importing, dialog,
            [&](bool runs) { (runs ? atStart : atEnd) = bar->isVisible(); });
        ImportingWindow::press(dialog, u"Command3"_s);
        QCOMPARE(shown, (QStringList {u"Importing 1 of 3"_s, u"Importing 2 of 3"_s, u"Importing 3 of 3"_s}));
        QVERIFY(atStart);
        QVERIFY(!atEnd);
        QVERIFY(!bar->isVisible());
    }

    void theProgressBarIsPaintedWhileItMoves()
    {
        ImportingWindow window;
        for (int second = 0; second < 5; ++second) {
            window.spy(u"2010-06-12 18-22-0%1 111%1 A.txt"_s.arg(second));
        }
        window.start();
        auto *dialog = window.openSpy(u"12/06/2010"_s);
        // Receptions that take their time: each is longer than the screen may stand still.
        connect(dialog, &importRDSSpy::progress, dialog, [] { QThread::msleep(60); });
        const PaintedValues inStatusBar(*window.find<QProgressBar>("progress"));
        const PaintedValues inWindow(*dialog->findChild<QProgressBar *>(u"progressBar"_s));
        ImportingWindow::press(dialog, u"Command3"_s);
        QCOMPARE(window.form().log().count(), 5);
        for (const PaintedValues *painted : {&inStatusBar, &inWindow}) {
            QVERIFY(painted->values().size() >= 5);
            QCOMPARE(painted->values().last(5), QList<int>({1, 2, 3, 4, 5}));
        }
    }

    void theProgressBarIsHiddenAfterAFailure()
    {
        ImportingWindow window;
        window.spy(u"2010-06-12 18-22-05 1111 A.txt"_s);
        window.spy(u"2010-06-12 18-22-06 2222 B.txt"_s);
        window.start();
        auto *dialog = window.openSpy(u"12/06/2010"_s);
        connect(dialog, &importRDSSpy::progress, dialog, [&window] { window.calls.failSync = ENOSPC; });
        ImportingWindow::press(dialog, u"Command3"_s);
        QVERIFY(dialog->isVisible());
        QVERIFY(!window.find<QProgressBar>("progress")->isVisible());
    }
};

QTEST_MAIN(TestImportProgress)
#include "tst_importprogress.moc"
