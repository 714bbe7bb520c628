#include "strangers.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QGraphicsTextItem>
#include <QGraphicsView>
#include <QLabel>
#include <QMessageBox>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextEdit>

#include <algorithm>

namespace quillon::test {

using namespace Qt::StringLiterals;

namespace {

bool holdsOne(const QString &text)
{
    const QStringList texts = strangeTexts();
    return std::ranges::any_of(texts, [&](const QString &strange) { return text.contains(strange); });
}

bool isMarkup(const QString &text, Qt::TextFormat format)
{
    return format == Qt::RichText || format == Qt::MarkdownText
        || (format == Qt::AutoText && Qt::mightBeRichText(text));
}

// What stands in a document only because markup was taken for what it says: "image x", "link x y", "bold x".
QSet<QString> tracesOf(const QTextDocument &document)
{
    QSet<QString> traces;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextCharFormat format = part.fragment().charFormat();
            if (format.isImageFormat()) {
                traces.insert(u"image "_s + format.toImageFormat().name());
            } else if (format.isAnchor()) {
                traces.insert(u"link "_s + format.anchorHref() + u' ' + part.fragment().text());
            } else if (format.fontWeight() > QFont::Normal) {
                traces.insert(u"bold "_s + part.fragment().text());
            }
        }
    }
    return traces;
}

QSet<QString> strangeTraces()
{
    QSet<QString> traces;
    for (const QString &strange : strangeTexts()) {
        QTextDocument document;
        document.setHtml(strange);
        traces.unite(tracesOf(document));
    }
    return traces;
}

QString nameOf(const QObject &object)
{
    for (const QObject *each = &object; each; each = each->parent()) {
        if (!each->objectName().isEmpty() && !each->objectName().startsWith(u"qt_"_s)) {
            return each->objectName();
        }
    }
    return QString::fromLatin1(object.metaObject()->className());
}

} // namespace

QStringList strangeTexts()
{
    return {strangePs, strangeImage, strangeLink};
}

StrangersWatch::StrangersWatch()
{
    qApp->installEventFilter(this);
}

QStringList StrangersWatch::taken() const
{
    QStringList all(m_taken.begin(), m_taken.end());
    all.sort();
    return all;
}

QStringList StrangersWatch::seen() const
{
    QStringList all(m_seen.begin(), m_seen.end());
    all.sort();
    return all;
}

bool StrangersWatch::eventFilter(QObject *watched, QEvent *event)
{
    if (watched->isWidgetType() && (event->type() == QEvent::Paint || event->type() == QEvent::Show)) {
        lookAt(*static_cast<const QWidget *>(watched));
    }
    return false;
}

void StrangersWatch::lookAtAll()
{
    const QWidgetList widgets = QApplication::allWidgets();
    for (const QWidget *widget : widgets) {
        lookAt(*widget);
        lookAtTips(*widget);
    }
}

void StrangersWatch::lookAt(const QWidget &widget)
{
    for (const QString &tip : {widget.toolTip(), widget.whatsThis()}) {
        judge(widget, tip, Qt::AutoText);
    }
    if (const auto *label = qobject_cast<const QLabel *>(&widget)) {
        judge(widget, label->text(), label->textFormat());
    } else if (const auto *box = qobject_cast<const QMessageBox *>(&widget)) {
        judge(widget, box->text(), box->textFormat());
        judge(widget, box->informativeText(), Qt::AutoText);
    } else if (const auto *edit = qobject_cast<const QTextEdit *>(&widget)) {
        judge(widget, *edit->document());
    } else if (const auto *scene = qobject_cast<const QGraphicsView *>(&widget); scene && scene->scene()) {
        const QList<QGraphicsItem *> items = scene->items();
        for (const QGraphicsItem *item : items) {
            if (const auto *text = qgraphicsitem_cast<const QGraphicsTextItem *>(item)) {
                judge(widget, *text->document());
            }
        }
    }
}

void StrangersWatch::lookAtTips(const QWidget &view)
{
    const QAbstractItemModel *model = nullptr;
    if (const auto *items = qobject_cast<const QAbstractItemView *>(&view)) {
        model = items->model();
    } else if (const auto *combo = qobject_cast<const QComboBox *>(&view)) {
        model = combo->model();
    }
    for (int row = 0; model && row < model->rowCount(); ++row) {
        for (int column = 0; column < model->columnCount(); ++column) {
            const QModelIndex cell = model->index(row, column);
            judge(view, cell.data(Qt::ToolTipRole).toString(), Qt::AutoText);
            // The views themselves draw cells as plain text.
            judge(view, cell.data(Qt::DisplayRole).toString(), Qt::PlainText);
        }
    }
}

void StrangersWatch::judge(const QWidget &widget, const QString &text, Qt::TextFormat format)
{
    QString shown = text;
    if (isMarkup(text, format)) {
        if (holdsOne(text)) {
            take(widget, text);
            return;
        }
        QTextDocument document;
        document.setHtml(text);
        shown = document.toPlainText();
    }
    if (holdsOne(shown)) {
        m_seen.insert(nameOf(widget));
    }
}

// A document that took markup for what it says no longer has its signs, but what they made.
void StrangersWatch::judge(const QWidget &widget, const QTextDocument &document)
{
    const QSet<QString> traces = tracesOf(document).intersect(strangeTraces());
    for (const QString &trace : traces) {
        take(widget, trace);
    }
    if (traces.isEmpty()) {
        judge(widget, document.toPlainText(), Qt::PlainText);
    }
}

void StrangersWatch::take(const QWidget &widget, const QString &text)
{
    m_taken.insert(
        QString::fromLatin1(widget.metaObject()->className()) + u' ' + nameOf(widget) + u": "_s + text);
}

} // namespace quillon::test
