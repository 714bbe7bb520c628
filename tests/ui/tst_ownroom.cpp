#include "ui/ownroom.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QTest>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

class LayoutCounter : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::LayoutRequest ? 1 : 0;
        return false;
    }
    int count = 0;
};

} // namespace

/// A label whose texts never lay its window out anew.
class TestOwnRoom : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itTakesThePlaceInTheLayout()
    {
        QWidget window;
        auto *layout = new QHBoxLayout(&window);
        auto *label = new QLabel(u"text"_s);
        auto *last = new QLabel(u"last"_s);
        layout->addWidget(new QLabel(u"first"_s));
        layout->addWidget(label);
        layout->addWidget(last);
        label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
        window.resize(400, 50);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const QRect before = label->geometry();
        auto *room = new OwnRoom(*label);
        room->show();
        QCoreApplication::processEvents();
        QCOMPARE(QRect(label->mapTo(&window, QPoint()), label->size()), before);
        QVERIFY(label->isVisible());
        window.resize(600, 50);
        QCoreApplication::processEvents();
        QCOMPARE(label->size(), room->size());
        QVERIFY(label->width() > before.width());
        QVERIFY(last->x() > room->geometry().right());
    }

    void aTextLaysNothingOut()
    {
        QWidget window;
        auto *layout = new QHBoxLayout(&window);
        auto *label = new QLabel(u"text"_s);
        layout->addWidget(label);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        LayoutCounter counter;
        window.installEventFilter(&counter);
        label->setText(u"other"_s);
        QCoreApplication::processEvents();
        QVERIFY(counter.count > 0);
        new OwnRoom(*label);
        QCoreApplication::processEvents();
        counter.count = 0;
        label->setText(u"a text that is much longer"_s);
        label->hide();
        label->show();
        QCoreApplication::processEvents();
        QCOMPARE(counter.count, 0);
    }

    void whatIsHiddenStaysHidden()
    {
        QWidget window;
        auto *layout = new QHBoxLayout(&window);
        auto *label = new QLabel(u"text"_s);
        layout->addWidget(label);
        label->hide();
        new OwnRoom(*label);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(label->isHidden());
    }
};

QTEST_MAIN(TestOwnRoom)
#include "tst_ownroom.moc"
