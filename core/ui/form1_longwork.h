#pragma once

#include "core/ui/form1.h"
#include "ui/widgetstate.h"

#include <QPointer>

#include <vector>

namespace quillon {

/// As long as it lives, an automatic search or an upload runs: the form, the grid and every command that
/// changes the log are disabled, and the button "Stop" stands beside the progress. What was pressed meanwhile
/// is not kept for later.
class Form1::LongWork
{
public:
    LongWork(Form1 &window, const QString &progressFormat);
    ~LongWork();
    LongWork(const LongWork &) = delete;
    LongWork &operator=(const LongWork &) = delete;

    /// True when the user has pressed "Stop".
    [[nodiscard]] bool isStopped() const { return m_stopped; }
    void setProgress(int done, int count);

private:
    void disable(QWidget *widget);

    Form1 &m_window;
    ShownProgress m_progress;
    QPointer<QWidget> m_focus;
    std::vector<QPointer<QWidget>> m_widgets;
    std::vector<QPointer<QAction>> m_actions;
    bool m_stopped = false;
};

} // namespace quillon
