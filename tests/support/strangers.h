#pragma once

#include <QObject>
#include <QSet>
#include <QStringList>

class QTextDocument;
class QWidget;

namespace quillon::test {

/// Texts as strangers send them: as long as a station's name may be, and longer.
inline const QString strangePs = QStringLiteral("<b>x</b>");
inline const QString strangeImage = QStringLiteral("<img src=x>");
inline const QString strangeLink = QStringLiteral("<a href=x>y</a>");
[[nodiscard]] QStringList strangeTexts();

/// Looks, as long as it lives, at every window, label, box and tip that is painted, for a stranger's text
/// that is taken for markup instead of being shown as it is written.
class StrangersWatch : public QObject
{
    Q_OBJECT

public:
    StrangersWatch();

    /// Looks once more at all that is there now, at every cell's tip too.
    void lookAtAll();

    /// What was taken for markup: "CLASS NAME: text"; of a document, what the markup has made there.
    [[nodiscard]] QStringList taken() const;
    /// The names of labels, boxes and views in which a stranger's text was seen as it is written.
    [[nodiscard]] bool saw(const QString &name) const { return m_seen.contains(name); }
    [[nodiscard]] QStringList seen() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void lookAt(const QWidget &widget);
    void lookAtTips(const QWidget &view);
    void judge(const QWidget &widget, const QString &text, Qt::TextFormat format);
    void judge(const QWidget &widget, const QTextDocument &document);
    void take(const QWidget &widget, const QString &text);

    QSet<QString> m_seen;
    QSet<QString> m_taken;
};

} // namespace quillon::test
