#include "core/genericorder.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <numeric>

using namespace quillon;
using namespace Qt::StringLiterals;

class TestGenericOrder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theGenericOrder_data()
    {
        QTest::addColumn<QString>("left");
        QTest::addColumn<QString>("right");
        QTest::addColumn<int>("order");
        QTest::newRow("numbers by value") << u"9"_s << u"10"_s << -1;
        QTest::newRow("decimals") << u"87.60"_s << u"87.6"_s << 0;
        QTest::newRow("decimal comma") << u"87,7"_s << u"87.6"_s << 1;
        QTest::newRow("negative") << u"-5"_s << u"-4"_s << -1;
        QTest::newRow("number before text") << u"999"_s << u"A"_s << -1;
        QTest::newRow("number before empty") << u"999"_s << u""_s << -1;
        QTest::newRow("empty before text") << u""_s << u"A"_s << -1;
        QTest::newRow("text by letters") << u"Brocken"_s << u"Inselsberg"_s << -1;
        QTest::newRow("case does not count") << u"brocken"_s << u"BROCKEN"_s << 0;
        QTest::newRow("hexadecimal is text") << u"D3C3"_s << u"D318"_s << 1;
        QTest::newRow("exponent is a number") << u"1E3"_s << u"999"_s << 1;
        QTest::newRow("NaN is text") << u"NaN"_s << u"1"_s << 1;
    }

    void theGenericOrder()
    {
        QFETCH(QString, left);
        QFETCH(QString, right);
        QFETCH(int, order);
        const auto sign = [](std::weak_ordering value) {
            return std::is_lt(value) ? -1 : std::is_gt(value) ? 1 : 0;
        };
        QCOMPARE(sign(genericOrder(left, right)), order);
        QCOMPARE(sign(genericOrder(right, left)), -order);
        QCOMPARE(sign(genericOrder(left, left)), 0);
    }

    void theGenericSortIsStable()
    {
        const std::vector<QString> texts {u"b"_s, u"10"_s, u"A"_s, u"9.0"_s, u""_s, u"a"_s, u"9"_s, u"B"_s};
        QCOMPARE(genericSort(texts), (std::vector {3, 6, 1, 4, 2, 5, 0, 7}));
        QCOMPARE(genericSort({}), std::vector<int>());
    }

    void descendingKeepsEqualTextsInOrderToo()
    {
        const std::vector<QString> texts {u"b"_s, u"10"_s, u"A"_s, u"9.0"_s, u""_s, u"a"_s, u"9"_s, u"B"_s};
        QCOMPARE(genericSort(texts, true), (std::vector {0, 7, 2, 5, 4, 1, 3, 6}));
    }

    void theSortFollowsTheOrder()
    {
        QRandomGenerator random(3);
        const QStringList words {u""_s, u"a"_s, u"A"_s, u"b"_s, u"9"_s, u"9.0"_s, u"10"_s, u"-1"_s, u"1E3"_s,
            u"NaN"_s, u"Ä"_s, u"87,6"_s};
        for (int run = 0; run < 200; ++run) {
            std::vector<QString> texts(static_cast<std::size_t>(random.bounded(30)));
            std::ranges::generate(texts, [&] { return words.at(random.bounded(words.size())); });
            const bool descending = run % 2 == 1;
            std::vector<int> expected(texts.size());
            std::iota(expected.begin(), expected.end(), 0);
            std::ranges::stable_sort(expected, [&](int left, int right) {
                const auto order = genericOrder(
                    texts[static_cast<std::size_t>(left)], texts[static_cast<std::size_t>(right)]);
                return descending ? order > 0 : order < 0;
            });
            QCOMPARE(genericSort(texts, descending), expected);
        }
    }
};

QTEST_GUILESS_MAIN(TestGenericOrder)
#include "tst_genericorder.moc"
