#include "ui/keptpictures.h"

#include <QPainter>
#include <QStyleOptionFrame>
#include <QStyleOptionSlider>
#include <QTest>

using namespace quillon;

/// What is drawn once is not drawn again while it looks the same.
class TestKeptPictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_pictures.emplace();
        m_drawn = 0;
    }
    void aFieldIsDrawnOnce()
    {
        drawField(Qt::yellow);
        QCOMPARE(m_drawn, 1);
        drawField(Qt::yellow);
        QCOMPARE(m_drawn, 1);
        drawField(Qt::white);
        QCOMPARE(m_drawn, 2);
        drawField(Qt::yellow, QSize(101, 22));
        QCOMPARE(m_drawn, 3);
        drawField(Qt::yellow);
        QCOMPARE(m_drawn, 3);
    }
    void gradientsCountAsDifferent()
    {
        QLinearGradient gradient(0, 0, 0, 22);
        gradient.setColorAt(0, Qt::white);
        drawField(gradient);
        gradient.setColorAt(1, Qt::yellow);
        drawField(gradient);
        QCOMPARE(m_drawn, 2);
    }
    void patternsCountAsDifferent()
    {
        drawField(QBrush(Qt::yellow, Qt::SolidPattern));
        drawField(QBrush(Qt::yellow, Qt::Dense4Pattern));
        drawField(QBrush(Qt::yellow, Qt::NoBrush));
        QCOMPARE(m_drawn, 3);
        drawField(QBrush(Qt::yellow, Qt::Dense4Pattern));
        QCOMPARE(m_drawn, 3);
    }
    void itStandsWhereItBelongs()
    {
        QStyleOptionFrame field;
        field.rect = QRect(30, 40, 100, 22);
        m_screen.fill(Qt::white);
        QImage expected = m_screen;
        QPainter(&expected).fillRect(field.rect, Qt::red);
        for (int time = 0; time < 2; ++time) {
            m_screen.fill(Qt::white);
            m_pictures->drawFieldPanel(
                m_painter, field, [&](QPainter &painter) { painter.fillRect(field.rect, Qt::red); });
            QCOMPARE(m_screen, expected);
        }
    }
    void scrollBarsPushNothingElseOut()
    {
        drawField(Qt::yellow);
        QStyleOptionSlider bar;
        bar.rect = QRect(0, 0, 14, 700);
        for (int place = 0; place < 500; ++place) {
            m_pictures->drawScrollBar(m_painter, bar, QRect(0, place, 14, 26), m_draw);
        }
        QCOMPARE(m_drawn, 501);
        drawField(Qt::yellow);
        QCOMPARE(m_drawn, 501);
    }

private:
    // With a palette of its own each time, as a control has that is told its colours again.
    void drawField(const QBrush &base, QSize size = QSize(100, 22))
    {
        QStyleOptionFrame field;
        field.rect = QRect(QPoint(), size);
        field.palette = QPalette();
        field.palette.setBrush(QPalette::Base, base);
        m_pictures->drawFieldPanel(m_painter, field, m_draw);
    }

    QImage m_screen {200, 800, QImage::Format_ARGB32_Premultiplied};
    QPainter m_painter {&m_screen};
    std::optional<KeptPictures> m_pictures;
    int m_drawn = 0;
    KeptPictures::Draw m_draw = [this](QPainter &) { ++m_drawn; };
};

QTEST_MAIN(TestKeptPictures)
#include "tst_keptpictures.moc"
