#include "core/ui/importingwindow.h"
#include "support/accessibility.h"

#include <QApplication>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QStyle>
#include <QStyleOptionFrame>

using namespace Qt::StringLiterals;
using namespace quillon;
using namespace quillon::test;

namespace {

// A small notebook, less what a window manager adds around a window.
const QSize smallScreen(1366 - 8, 768 - 36);

// The room that a field has for its text.
int textWidth(const QLineEdit &field)
{
    QStyleOptionFrame option;
    option.initFrom(&field);
    option.lineWidth =
        field.hasFrame() ? field.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &field) : 0;
    constexpr int marginsOfAField = 4;
    return field.style()->subElementRect(QStyle::SE_LineEditContents, &option, &field).width()
        - marginsOfAField;
}

} // namespace

/// Who needs larger letters sees all of each window on a small screen.
class TestRoom : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theMainWindowFits();
    void eachOtherWindowFits_data();
    void eachOtherWindowFits();
    void theSetupScrollsWhenHintsTakeTheRoom();

private:
    QFont m_before;
    std::unique_ptr<ImportingWindow> m_main;
};

void TestRoom::init()
{
    m_before = QApplication::font();
    QFont large = m_before;
    large.setPointSizeF(m_before.pointSizeF() * 1.5);
    QApplication::setFont(large);
    m_main = std::make_unique<ImportingWindow>();
    m_main->spy(u"20100612-182205 D3C3 RNE_1.rds"_s);
    m_main->directory.write(u"dx/20100612.log"_s, {});
    m_main->start(oldEntry);
}

void TestRoom::cleanup()
{
    m_main.reset();
    QApplication::setFont(m_before);
}

void TestRoom::theMainWindowFits()
{
    Form1 &form = m_main->form();
    const QSize least = form.minimumSizeHint();
    QVERIFY2(least.width() <= smallScreen.width() && least.height() <= smallScreen.height(),
        qPrintable(u"%1 x %2"_s.arg(least.width()).arg(least.height())));
    form.resize(smallScreen);
    m_main->clickRow(1);
    QCoreApplication::processEvents();
    QCOMPARE(form.size(), smallScreen);
    QCOMPARE(cutOff(form).join(u' '), QString());
    QVERIFY(m_main->grid().viewport()->height() > 3 * m_main->grid().rowHeight(0));
    for (const char *name : {"Text5", "Text8"}) {
        const auto *field = m_main->find<QLineEdit>(name);
        const int eight = field->fontMetrics().horizontalAdvance(u"MMMMMMMM"_s);
        QVERIFY2(textWidth(*field) >= eight,
            qPrintable(u"%1: %2 of %3"_s.arg(QString::fromLatin1(name)).arg(textWidth(*field)).arg(eight)));
    }
}

void TestRoom::eachOtherWindowFits_data()
{
    QTest::addColumn<QString>("window");
    QTest::addColumn<QString>("command");
    QTest::newRow("Quick Add") << u"Dialog1"_s << u"Command14"_s;
    QTest::newRow("Scratch Pad") << u"ScratchPad"_s << u"Command12"_s;
    QTest::newRow("Converter") << u"Dialog"_s << u"menuToolsConverter"_s;
    QTest::newRow("Setup") << u"Form2"_s << u"menuSetup"_s;
    QTest::newRow("About") << u"frmSplash"_s << u"menuAbout"_s;
    QTest::newRow("Statistics") << u"logStats"_s << u"menuStats"_s;
    QTest::newRow("Import") << u"importFile"_s << u"menuImportFile"_s;
    QTest::newRow("Collection") << u"collection"_s << u"menuStatsCollection"_s;
    QTest::newRow("RDS Spy") << u"importRDSSpy"_s << u"menuImportRDSSpyLog"_s;
    QTest::newRow("RDSDX") << u"rdsdxlist"_s << u"menuImportRDSDXLogCnv"_s;
}

void TestRoom::eachOtherWindowFits()
{
    QFETCH(QString, window);
    QFETCH(QString, command);
    m_main->answers.type(u"12/06/2010"_s);
    if (command.startsWith(u"Command")) {
        m_main->click(command);
    } else {
        m_main->trigger(command);
    }
    auto *opened = m_main->find<QWidget>(window);
    QVERIFY(QTest::qWaitForWindowExposed(opened));
    QVERIFY2(opened->width() <= smallScreen.width() && opened->height() <= smallScreen.height(),
        qPrintable(u"%1 x %2"_s.arg(opened->width()).arg(opened->height())));
    QCOMPARE(cutOff(*opened).join(u' '), QString());
}

void TestRoom::theSetupScrollsWhenHintsTakeTheRoom()
{
    m_main->trigger("menuSetup");
    auto *setup = m_main->find<QWidget>("Form2");
    QVERIFY(QTest::qWaitForWindowExposed(setup));
    QCOMPARE(setup->focusWidget()->objectName(), u"Text1"_s);
    for (const char *field : {"latitude", "longitude"}) {
        setup->findChild<QLineEdit *>(QString::fromLatin1(field))->setText(u"north"_s);
    }
    for (const char *field : {"rdsdir", "rdsspydir"}) {
        setup->findChild<QLineEdit *>(QString::fromLatin1(field))->setText(u"C:\\RDSSpy\\a\\b"_s);
    }
    QCoreApplication::processEvents();
    QVERIFY(setup->height() < setup->screen()->availableSize().height());
    setup->resize(setup->width(), smallScreen.height());
    for (const char *name : {"rdsdirHint", "rdsspydirHint", "problem"}) {
        const auto *hint = setup->findChild<QLabel *>(QString::fromLatin1(name));
        QVERIFY2(hint->height() >= hint->heightForWidth(hint->width()), name);
    }
    for (const char *name : {"Command1", "Command2"}) {
        const auto *button = setup->findChild<QWidget *>(QString::fromLatin1(name));
        QVERIFY(setup->rect().contains(QRect(button->mapTo(setup, QPoint()), button->size())));
    }
    // The Tab key brings each field into view.
    const auto *page = setup->findChild<QWidget *>(u"page"_s);
    for (const char *name : {"Text1", "rdsspydir"}) {
        auto *field = setup->findChild<QWidget *>(QString::fromLatin1(name));
        setup->activateWindow();
        field->setFocus(Qt::TabFocusReason);
        QTest::keyClick(field, Qt::Key_Tab);
        QTest::keyClick(setup->focusWidget(), Qt::Key_Backtab);
        QVERIFY(field->hasFocus());
        QVERIFY(page->rect().contains(field->mapTo(page, field->rect().center())));
    }
}

QTEST_MAIN(TestRoom)
#include "tst_room.moc"
