#include "support/dialogs.h"
#include "ui/messages.h"

#include <QMessageBox>
#include <QPushButton>
#include <QTest>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

/// What the boxes answer to a key.
class TestMessages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noIsTheDefault()
    {
        DialogAnswers answers;
        const auto byKey = [&answers](Qt::Key key) {
            answers.doing([key](QWidget *box) { QTest::keyClick(box, key); });
            return askYesNo(nullptr, u"Delete 2 receptions?"_s, u"Delete"_s);
        };
        QVERIFY(!byKey(Qt::Key_Return));
        QVERIFY(!byKey(Qt::Key_Escape));
        answers.press(QMessageBox::Yes);
        QVERIFY(askYesNo(nullptr, u"Delete 2 receptions?"_s, u"Delete"_s));
    }

    void theDefaultIsSeen()
    {
        DialogAnswers answers;
        QString ahead;
        answers.doing([&ahead](QWidget *widget) {
            auto *box = qobject_cast<QMessageBox *>(widget);
            ahead = box->defaultButton()->text().remove(u'&');
            box->reject();
        });
        QVERIFY(!askYesNo(nullptr, u"Delete 2 receptions?"_s, u"Delete"_s));
        QCOMPARE(ahead, u"No"_s);
    }
};

QTEST_MAIN(TestMessages)
#include "tst_messages.moc"
