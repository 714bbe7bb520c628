#include "ui/fieldcompleter.h"

#include <QAbstractItemView>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

// A field with a list of sites, and another one beside it.
struct Fields
{
    Fields()
    {
        auto *rows = new QVBoxLayout(&window);
        rows->addWidget(&field);
        rows->addWidget(&other);
        window.show();
        window.activateWindow();
        field.setFocus();
    }
    [[nodiscard]] QStringList offered()
    {
        QStringList shown;
        const QAbstractItemModel *model = completer.popup()->model();
        for (int row = 0; completer.popup()->isVisible() && row < model->rowCount(); ++row) {
            shown += model->index(row, 0).data().toString();
        }
        return shown;
    }

    QStringList texts {u"Brocken"_s, u"Brandenburg"_s, u"Inselsberg"_s};
    QWidget window;
    QLineEdit field;
    QLineEdit other;
    FieldCompleter completer {field, [this] { return texts; }};
};

} // namespace

/// What is offered below a field, and what becomes of the field.
class TestFieldCompleter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatContainsTheTextIsOffered()
    {
        Fields fields;
        QVERIFY(QTest::qWaitForWindowActive(&fields.window));
        QTest::keyClicks(&fields.field, u"BR"_s);
        QCOMPARE(fields.offered(), (QStringList {u"Brocken"_s, u"Brandenburg"_s}));
        QTest::keyClicks(&fields.field, u"a"_s);
        QCOMPARE(fields.offered(), QStringList {u"Brandenburg"_s});
        fields.field.clear();
        QTest::keyClicks(&fields.field, u"berg"_s);
        QCOMPARE(fields.offered(), QStringList {u"Inselsberg"_s});
        QVERIFY(!fields.completer.isChoosing());
        QCOMPARE(fields.field.text(), u"berg"_s);
        QTest::keyClicks(&fields.field, u"x"_s);
        QCOMPARE(fields.offered(), QStringList());
    }

    void whatStandsThereIsNotOffered()
    {
        Fields fields;
        QVERIFY(QTest::qWaitForWindowActive(&fields.window));
        QTest::keyClicks(&fields.field, u"Brocken"_s);
        QCOMPARE(fields.offered(), QStringList());
    }

    void theArrowOffersAllAndEnterTakesTheMarkedOne()
    {
        Fields fields;
        QVERIFY(QTest::qWaitForWindowActive(&fields.window));
        QTest::keyClick(&fields.field, Qt::Key_Down);
        QCOMPARE(fields.offered(), fields.texts);
        QSignalSpy edited(&fields.field, &QLineEdit::textEdited);
        QTest::keyClick(fields.completer.popup(), Qt::Key_Down);
        QTest::keyClick(fields.completer.popup(), Qt::Key_Down);
        QVERIFY(fields.completer.isChoosing());
        QCOMPARE(fields.field.text(), QString());
        QTest::keyClick(fields.completer.popup(), Qt::Key_Return);
        QCOMPARE(fields.field.text(), u"Brandenburg"_s);
        QCOMPARE(edited.size(), 1);
        QCOMPARE(fields.offered(), QStringList());
    }

    void theListIsThatOfTheMomentTheFieldWasEntered()
    {
        Fields fields;
        QVERIFY(QTest::qWaitForWindowActive(&fields.window));
        fields.texts += u"Ochsenkopf"_s;
        QTest::keyClicks(&fields.field, u"Ochs"_s);
        QCOMPARE(fields.offered(), QStringList());
        fields.field.clear();
        fields.other.setFocus();
        fields.field.setFocus();
        QTest::keyClicks(&fields.field, u"Ochs"_s);
        QCOMPARE(fields.offered(), QStringList {u"Ochsenkopf"_s});
    }

    void whoLeavesTheFieldTakesTheListAway()
    {
        Fields fields;
        QVERIFY(QTest::qWaitForWindowActive(&fields.window));
        QTest::keyClicks(&fields.field, u"Br"_s);
        QCOMPARE(fields.offered().size(), 2);
        // What is no key of the list and no loss of the focus leaves it open.
        QEvent moved(QEvent::ToolTip);
        QCoreApplication::sendEvent(&fields.field, &moved);
        QCOMPARE(fields.offered().size(), 2);
        fields.other.setFocus();
        QCOMPARE(fields.offered(), QStringList());
    }
};

QTEST_MAIN(TestFieldCompleter)
#include "tst_fieldcompleter.moc"
