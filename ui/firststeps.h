#pragma once

#include <QFrame>

class QAction;
class QPushButton;
class QVBoxLayout;

namespace quillon {

/// What an empty log says at the first start: the things to do, each a link that is reached by Tab.
class FirstSteps : public QFrame
{
    Q_OBJECT

public:
    explicit FirstSteps(QWidget *parent = nullptr);

    /// Offers a menu entry as a tick.
    void offer(QAction &action);

Q_SIGNALS:
    void setupWanted();
    void quickAddWanted();
    void importWanted();

private:
    QPushButton &addLink(const QString &name, const QString &text, const QString &rest);

    QVBoxLayout *m_rows;
};

} // namespace quillon
