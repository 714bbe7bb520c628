#include "support/accessibility.h"
#include "support/combos.h"
#include "support/dialogs.h"
#include "support/wheel.h"
#include "ui/filterbar.h"
#include "ui/looks.h"
#include "ui/problemlabel.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

namespace {

// The bar above what stands for the grid.
class Window
{
public:
    Window()
    {
        auto *layout = new QVBoxLayout(&page);
        layout->addWidget(bar);
        layout->addWidget(below);
        bar->setLists({{u"Es"_s, u"Tropo"_s}, {u"D"_s, u"E"_s}, {2025, 2024}});
        QObject::connect(
            bar, &FilterBar::changed, bar, [this](const LogFilter &filter) { told.push_back(filter); });
        page.resize(1024, 300);
        page.show();
        (void)QTest::qWaitForWindowActive(&page);
        box().setFocus();
    }

    template<typename Widget>
    [[nodiscard]] Widget &find(const char *name) const
    {
        auto *found = page.findChild<Widget *>(QLatin1StringView(name));
        Q_ASSERT(found);
        return *found;
    }
    [[nodiscard]] QLineEdit &box() const { return find<QLineEdit>("filterText"); }
    [[nodiscard]] QString problem() const
    {
        const auto &label = find<ProblemLabel>("filterProblem");
        return label.isVisible() ? label.text() : QString();
    }
    [[nodiscard]] QStringList items(const char *name) const { return itemsOf(find<QComboBox>(name)); }
    void type(const QString &text)
    {
        box().setFocus();
        QTest::keyClicks(&box(), text);
    }
    void choose(const char *name, const QString &text)
    {
        auto &combo = find<QComboBox>(name);
        combo.setFocus();
        QTest::keyClicks(&combo, text);
    }
    // Chooses an entry of the menu, of its submenu when two are given.
    void keep(const QStringList &captions)
    {
        QMenu *menu = find<QToolButton>("filterKept").menu();
        Q_EMIT menu->aboutToShow();
        for (const QString &caption : captions) {
            const QList<QAction *> entries = menu->actions();
            const auto entry = std::ranges::find(entries, caption, &QAction::text);
            QVERIFY2(entry != entries.end(), qPrintable(caption));
            if ((*entry)->menu()) {
                menu = (*entry)->menu();
            } else {
                QVERIFY((*entry)->isEnabled());
                (*entry)->trigger();
            }
        }
    }
    [[nodiscard]] QStringList kept() const
    {
        QMenu *menu = find<QToolButton>("filterKept").menu();
        Q_EMIT menu->aboutToShow();
        QStringList captions;
        for (const QAction *entry : menu->actions()) {
            captions += entry->isSeparator() ? u"-"_s : entry->text();
        }
        return captions;
    }

    QWidget page;
    FilterBar *bar = new FilterBar;
    QPlainTextEdit *below = new QPlainTextEdit;
    std::vector<LogFilter> told;
};

bool isMarked(const QWidget &field, const QPalette &usual)
{
    const QPalette &colours = field.palette();
    return colours.color(QPalette::Base) != usual.color(QPalette::Base)
        && contrastOf(colours.color(QPalette::Base), colours.color(QPalette::Text)) >= readableContrast
        && contrastOf(colours.color(QPalette::Button), colours.color(QPalette::ButtonText))
        >= readableContrast
        && contrastOf(colours.color(QPalette::Window), colours.color(QPalette::WindowText))
        >= readableContrast;
}

} // namespace

class TestFilterBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { installLooks(); }

    void filtersWithEachKey()
    {
        Window window;
        window.type(u"rn"_s);
        QCOMPARE(window.told.size(), 2);
        QCOMPARE(window.told.back().terms.size(), 1);
        QCOMPARE(window.told.back().terms.front().text, u"rn"_s);
        QVERIFY(window.bar->filter() == window.told.back());
        // What says the same filters nothing anew.
        window.type(u" "_s);
        QCOMPARE(window.told.size(), 2);
    }

    void aTermThatCannotBeReadIsToldAndLeavesTheFilter()
    {
        Window window;
        window.type(u"rne km"_s);
        const LogFilter before = window.bar->filter();
        window.told.clear();
        const int height = window.bar->height();
        const QRect below = window.below->geometry();
        window.type(u">x"_s);
        QCOMPARE(window.problem(), u"km>x: \"x\" is not a number"_s);
        QCOMPARE(window.box().accessibleDescription(), window.problem());
        QVERIFY(window.bar->filter() == before);
        QVERIFY(window.told.empty());
        QCOMPARE(window.bar->height(), height);
        QCOMPARE(window.below->geometry(), below);
        const auto &label = window.find<ProblemLabel>("filterProblem");
        QCOMPARE(label.mapTo(&window.page, QPoint()).y(),
            window.box().mapTo(&window.page, QPoint(0, window.box().height() + 1)).y());
        QTest::keyClick(&window.box(), Qt::Key_Backspace);
        window.type(u"5"_s);
        QCOMPARE(window.problem(), QString());
        QCOMPARE(window.box().accessibleDescription(), QString());
        QCOMPARE(window.bar->filter().terms.size(), 2);
    }

    void aLongProblemStaysInTheWindow()
    {
        Window window;
        window.bar->setText(u"freq:"_s + QString(900, u'W'));
        const auto &label = window.find<ProblemLabel>("filterProblem");
        QVERIFY(label.isVisible());
        QVERIFY(window.page.rect().contains(label.geometry()));
        window.page.resize(window.page.minimumSizeHint().width(), 300);
        QTRY_VERIFY(window.page.rect().contains(label.geometry()));
    }

    void combosOfferAllAndWhatIsInTheLog()
    {
        const Window window;
        QCOMPARE(window.items("filterMode"), (QStringList {u"All"_s, u"Es"_s, u"Tropo"_s}));
        QCOMPARE(window.items("filterCountry"), (QStringList {u"All"_s, u"D"_s, u"E"_s}));
        QCOMPARE(window.items("filterYear"), (QStringList {u"All"_s, u"2025"_s, u"2024"_s}));
        QCOMPARE(window.items("filterFmlist"),
            (QStringList {u"All"_s, u"No UID"_s, u"Not sent"_s, u"Sent"_s, u"None"_s, u"Multi"_s}));
        QVERIFY(window.bar->filter().isEmpty());
    }

    void combosFilter()
    {
        Window window;
        window.choose("filterMode", u"Tr"_s);
        QVERIFY(window.bar->filter().mode == u"Tropo"_s);
        window.choose("filterCountry", u"E"_s);
        QVERIFY(window.bar->filter().country == u"E"_s);
        window.choose("filterYear", u"2024"_s);
        QCOMPARE(window.bar->filter().year, 2024);
        window.choose("filterFmlist", u"Not"_s);
        QCOMPARE(window.bar->filter().fmlist, FMListState::NotSent);
        QVERIFY(window.bar->filter() == window.told.back());
        QTest::keyClick(&window.find<QComboBox>("filterMode"), Qt::Key_Home);
        QVERIFY(!window.bar->filter().mode);
    }

    void aWheelOverAComboChangesNothing()
    {
        Window window;
        turnWheel(window.find<QComboBox>("filterYear"), -1);
        QVERIFY(window.bar->filter().isEmpty());
        QVERIFY(window.box().hasFocus());
    }

    void newListsLeaveTheChoice()
    {
        Window window;
        window.choose("filterYear", u"2024"_s);
        window.told.clear();
        window.bar->setLists({{u"All"_s}, {}, {2026, 2025}});
        QCOMPARE(window.items("filterMode"), (QStringList {u"All"_s, u"All"_s}));
        QCOMPARE(window.items("filterYear"), (QStringList {u"All"_s, u"2026"_s, u"2025"_s, u"2024"_s}));
        QCOMPARE(window.bar->filter().year, 2024);
        QVERIFY(window.told.empty());
        window.bar->clear();
        window.bar->setLists({{}, {}, {2026}});
        QCOMPARE(window.items("filterYear"), (QStringList {u"All"_s, u"2026"_s}));
    }

    void escapeAndTheButtonClear_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("Esc") << true;
        QTest::newRow("button") << false;
    }

    void escapeAndTheButtonClear()
    {
        QFETCH(bool, byKey);
        Window window;
        auto &button = window.find<QToolButton>("filterClear");
        QVERIFY(!button.isEnabled());
        window.choose("filterMode", u"Es"_s);
        window.type(u"rne"_s);
        window.told.clear();
        if (byKey) {
            QTest::keyClick(&window.box(), Qt::Key_Escape);
        } else {
            QTest::mouseClick(&button, Qt::LeftButton);
        }
        QCOMPARE(window.box().text(), QString());
        QCOMPARE(window.find<QComboBox>("filterMode").currentIndex(), 0);
        QCOMPARE(window.told.size(), 1);
        QVERIFY(window.told.back().isEmpty());
        QVERIFY(!button.isEnabled());
    }

    void theCountSaysHowManyAreShown()
    {
        Window window;
        const auto &count = window.find<QLabel>("filterCount");
        window.bar->setCounts(414, 414);
        QCOMPARE(count.text(), u"414"_s);
        QCoreApplication::sendPostedEvents();
        const QRect box = window.box().geometry();
        window.type(u"x"_s);
        window.bar->setCounts(37, 414);
        QCOMPARE(count.text(), u"37 of 414"_s);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(window.box().geometry(), box);
        QCOMPARE(cutOff(window.page), QStringList());
    }

    void anActiveFilterIsMarked_data()
    {
        QTest::addColumn<QPalette>("palette");
        QTest::newRow("light") << QPalette(QColor(0xefefef));
        QPalette dark(QColor(0x353535));
        dark.setColor(QPalette::Window, QColor(0x2b2b2b));
        QTest::newRow("dark") << dark;
    }

    void anActiveFilterIsMarked()
    {
        QFETCH(QPalette, palette);
        Window window;
        window.page.setPalette(palette);
        const QPalette usual = window.bar->palette();
        const auto &mode = window.find<QComboBox>("filterMode");
        const auto &count = window.find<QLabel>("filterCount");
        QVERIFY(!isMarked(window.box(), usual));
        window.choose("filterMode", u"Es"_s);
        QVERIFY(isMarked(mode, usual));
        QVERIFY(isMarked(count, usual));
        QVERIFY(count.autoFillBackground());
        QVERIFY(!isMarked(window.box(), usual));
        window.type(u"x"_s);
        QVERIFY(isMarked(window.box(), usual));
        window.bar->clear();
        for (const QWidget *field : {static_cast<const QWidget *>(&mode),
                 static_cast<const QWidget *>(&count), static_cast<const QWidget *>(&window.box())}) {
            QVERIFY(!isMarked(*field, usual));
        }
    }

    void filtersAreKeptUnderAName()
    {
        const QTemporaryDir directory;
        const QString path = directory.filePath(u"quillon.conf"_s);
        DialogAnswers answers;
        {
            Window window;
            window.bar->setKeptFilters(KeptFilters(path));
            QCOMPARE(window.kept(), (QStringList {u"&Save this filter…"_s}));
            QVERIFY(!window.find<QAction>("filterSave").isEnabled());
            window.choose("filterMode", u"Es"_s);
            window.type(u"km>1500"_s);
            answers.type(u" Far  & wide "_s);
            window.keep({u"&Save this filter…"_s});
            QCOMPARE(answers.seen().size(), 1);
        }
        Window window;
        window.bar->setKeptFilters(KeptFilters(path));
        QCOMPARE(window.kept(),
            (QStringList {
                u"&Save this filter…"_s, u"-"_s, u"Far && wide"_s, u"-"_s, u"&Rename"_s, u"R&emove"_s}));
        window.type(u"other"_s);
        window.told.clear();
        window.keep({u"Far && wide"_s});
        QCOMPARE(window.told.size(), 1);
        QCOMPARE(window.box().text(), u"km>1500"_s);
        QVERIFY(window.bar->filter().mode == u"Es"_s);
        answers.type(u"DX"_s);
        window.keep({u"&Rename"_s, u"Far && wide"_s});
        QCOMPARE(answers.seen().back().input, u"Far & wide"_s);
        QCOMPARE(KeptFilters(path).all().front().name, u"DX"_s);
        answers.press(QMessageBox::No);
        window.keep({u"R&emove"_s, u"DX"_s});
        QCOMPARE(KeptFilters(path).all().size(), 1);
        answers.press(QMessageBox::Yes);
        window.keep({u"R&emove"_s, u"DX"_s});
        QVERIFY(KeptFilters(path).all().empty());
        QCOMPARE(window.kept(), (QStringList {u"&Save this filter…"_s}));
    }

    void aNameThatIsTakenIsAskedFor()
    {
        Window window;
        KeptFilters filters;
        filters.save(u"one"_s, {u"old"_s, {}, {}, {}, {}});
        window.bar->setKeptFilters(filters);
        window.type(u"new"_s);
        DialogAnswers answers;
        answers.type(u"ONE"_s);
        answers.press(QMessageBox::No);
        window.keep({u"&Save this filter…"_s});
        QCOMPARE(answers.seen().back().text, u"There is a filter \"ONE\" already. Replace it?"_s);
        window.keep({u"one"_s});
        QCOMPARE(window.box().text(), u"old"_s);
        window.bar->setText(u"new"_s);
        answers.type(u"one"_s);
        answers.press(QMessageBox::Yes);
        window.keep({u"&Save this filter…"_s});
        window.bar->clear();
        window.keep({u"one"_s});
        QCOMPARE(window.box().text(), u"new"_s);
    }

    void aKeptFilterOfAnotherLogIsShownAsItIs()
    {
        Window window;
        KeptFilters filters;
        filters.save(u"one"_s, {{}, u"MS"_s, u"ISL"_s, u"1999"_s, u"junk"_s});
        window.bar->setKeptFilters(filters);
        window.keep({u"one"_s});
        QVERIFY(window.bar->filter().mode == u"MS"_s);
        QVERIFY(window.bar->filter().country == u"ISL"_s);
        QCOMPARE(window.bar->filter().year, 1999);
        QVERIFY(!window.bar->filter().fmlist);
    }

    void isReachedAndNamed()
    {
        Window window;
        QCOMPARE(withoutName(*window.bar), QStringList());
        QCOMPARE(cutOff(window.page), QStringList());
        window.type(u"x"_s);
        window.box().setFocus();
        QStringList order;
        for (int i = 0; i < 7; ++i) {
            order += QApplication::focusWidget()->objectName();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(order,
            (QStringList {u"filterText"_s, u"filterKept"_s, u"filterMode"_s, u"filterCountry"_s,
                u"filterYear"_s, u"filterFmlist"_s, u"filterClear"_s}));
        QVERIFY(window.bar->minimumSizeHint().width() <= 1000);
        QVERIFY(window.bar->sizeHint().height() <= window.box().sizeHint().height() + 10);
    }

    void theTipTellsTheKeys()
    {
        const Window window;
        QCOMPARE(window.box().placeholderText(), u"Filter the log"_s);
        for (const FilterKey &key : filterKeys()) {
            QVERIFY(window.box().toolTip().contains(QString("<b>"_L1 + key.key + u':')));
        }
    }
};

QTEST_MAIN(TestFilterBar)
#include "tst_filterbar.moc"
