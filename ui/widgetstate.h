#pragma once

#include <QProgressBar>
#include <QString>
#include <QWidget>

namespace quillon {

/// Keeps a widget hidden, as long as it lives. One that had the focus gets it back.
class Hidden
{
public:
    explicit Hidden(QWidget &widget)
        : m_widget(widget)
        , m_hadFocus(widget.hasFocus())
    {
        m_widget.hide();
    }
    ~Hidden()
    {
        m_widget.show();
        if (m_hadFocus) {
            m_widget.setFocus();
        }
    }
    Hidden(const Hidden &) = delete;
    Hidden &operator=(const Hidden &) = delete;

private:
    QWidget &m_widget;
    bool m_hadFocus;
};

/// Keeps a widget shown, as long as it lives.
class Shown
{
public:
    explicit Shown(QWidget &widget)
        : m_widget(widget)
    {
        m_widget.show();
    }
    ~Shown() { m_widget.hide(); }
    Shown(const Shown &) = delete;
    Shown &operator=(const Shown &) = delete;

private:
    QWidget &m_widget;
};

/// Keeps a widget disabled, as long as it lives.
class Disabled
{
public:
    explicit Disabled(QWidget &widget)
        : m_widget(widget)
    {
        m_widget.setEnabled(false);
    }
    ~Disabled() { m_widget.setEnabled(true); }
    Disabled(const Disabled &) = delete;
    Disabled &operator=(const Disabled &) = delete;

private:
    QWidget &m_widget;
};

/// Keeps a widget from drawing, as long as it lives.
class RedrawOff
{
public:
    explicit RedrawOff(QWidget &widget)
        : m_widget(widget)
        , m_before(widget.updatesEnabled())
    {
        m_widget.setUpdatesEnabled(false);
    }
    ~RedrawOff() { m_widget.setUpdatesEnabled(m_before); }
    RedrawOff(const RedrawOff &) = delete;
    RedrawOff &operator=(const RedrawOff &) = delete;

private:
    QWidget &m_widget;
    bool m_before;
};

/// Keeps a progress bar shown, as long as it lives. It begins empty; `format` is what stands in it, "%v" for
/// how much is done and "%m" for how much there is.
class ShownProgress
{
public:
    ShownProgress(QProgressBar &bar, const QString &format)
        : m_shown(bar)
    {
        bar.setFormat(format);
        bar.setMinimumWidth(widthOf(bar, format));
        bar.setRange(0, 0);
        bar.setValue(0);
    }

private:
    // Room for the text with any number that the work can come to, on one line.
    static int widthOf(const QProgressBar &bar, QString format)
    {
        const QString figures = QStringLiteral("00000");
        format.replace(QStringLiteral("%v"), figures).replace(QStringLiteral("%m"), figures);
        constexpr int padding = 24;
        return bar.fontMetrics().horizontalAdvance(format) + padding;
    }

    Shown m_shown;
};

} // namespace quillon
