#include "ui/problemlabel.h"

#include <QLineEdit>
#include <QPalette>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace quillon;
using namespace Qt::StringLiterals;

namespace {

// Relative luminance and contrast ratio of the Web Content Accessibility Guidelines 2.
double luminance(const QColor &colour)
{
    const auto linear = [](float value) {
        const auto v = static_cast<double>(value);
        return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

double contrast(const QColor &a, const QColor &b)
{
    const double light = std::max(luminance(a), luminance(b));
    const double dark = std::min(luminance(a), luminance(b));
    return (light + 0.05) / (dark + 0.05);
}

} // namespace

class TestProblemLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isReadableOnLightAndOnDark()
    {
        QWidget window;
        const ProblemLabel label(&window);
        for (const QRgb background : {0xffffffffU, 0xffefefefU, 0xff353535U, 0xff000000U, 0xffffff00U}) {
            QPalette palette;
            palette.setColor(QPalette::Window, QColor(background));
            window.setPalette(palette);
            QVERIFY(contrast(label.palette().color(QPalette::WindowText), QColor(background)) >= 4.5);
        }
    }

    void describesTheFieldAndTakesItBack()
    {
        QWidget window;
        QLineEdit first(&window);
        QLineEdit second(&window);
        ProblemLabel label(&window);
        label.showProblem(u"Too far"_s, &first);
        QCOMPARE(label.text(), u"Too far"_s);
        QCOMPARE(first.accessibleDescription(), u"Too far"_s);
        label.showProblem(u"Too near"_s, &second);
        QCOMPARE(first.accessibleDescription(), QString());
        QCOMPARE(second.accessibleDescription(), u"Too near"_s);
        label.showProblem({}, &first);
        QCOMPARE(label.text(), QString());
        QCOMPARE(second.accessibleDescription(), QString());
    }

    void isQuieterThanTheTextsAround()
    {
        QWidget window;
        const ProblemLabel label(&window);
        QVERIFY(label.font().pointSizeF() < window.font().pointSizeF());
    }

    void keepsItsPlaceWhileEmpty()
    {
        ProblemLabel label;
        const int empty = label.sizeHint().expandedTo(label.minimumSize()).height();
        label.setText(u"Problem"_s);
        QCOMPARE(label.sizeHint().expandedTo(label.minimumSize()).height(), empty);
    }
};

QTEST_MAIN(TestProblemLabel)
#include "tst_problemlabel.moc"
