#include "support/dialogs.h"
#include "ui/guard.h"

#include <QTest>

#include <new>
#include <stdexcept>

using namespace quillon;
using namespace quillon::test;
using namespace Qt::StringLiterals;

class TestGuard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void doneWorkIsSilent()
    {
        DialogAnswers answers;
        bool done = false;
        QVERIFY(guarded(nullptr, [&] { done = true; }));
        QVERIFY(done);
        QCOMPARE(answers.takeTexts(), QStringList());
    }

    void aRunTimeErrorIsShown()
    {
        DialogAnswers answers;
        answers.press(QMessageBox::Ok);
        QVERIFY(!guarded(nullptr, [] { throw RuntimeError(ErrorName::Overflow, u"Counting"_s); }));
        QCOMPARE(answers.takeTexts(), QStringList(u"Run-time error: Overflow\nCounting"_s));
    }

    void anotherExceptionIsAnInternalError()
    {
        DialogAnswers answers;
        answers.press(QMessageBox::Ok);
        QVERIFY(!guarded(nullptr, [] { throw std::runtime_error("out of luck"); }));
        QCOMPARE(answers.takeTexts(), QStringList(u"Run-time error: Internal error\nout of luck"_s));
    }

    void exhaustedMemoryIsAnInternalError()
    {
        DialogAnswers answers;
        answers.press(QMessageBox::Ok);
        QVERIFY(!guarded(nullptr, [] { throw std::bad_alloc(); }));
        QCOMPARE(answers.takeTexts(), QStringList(u"Run-time error: Internal error\nstd::bad_alloc"_s));
    }

    void anEndedRequestIsSilent()
    {
        DialogAnswers answers;
        QVERIFY(!guarded(nullptr, [] { throw RequestAborted(); }));
        QCOMPARE(answers.takeTexts(), QStringList());
    }
};

QTEST_MAIN(TestGuard)
#include "tst_guard.moc"
