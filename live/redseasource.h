#pragma once

#include "live/linesplitter.h"
#include "live/receiversource.h"

#include <QProcess>

namespace quillon {

/// The output of redsea, or of a pipeline that ends with it: a command line for the shell. It does not know
/// the frequency.
class RedseaSource : public ReceiverSource
{
    Q_OBJECT

public:
    explicit RedseaSource(QString command, QObject *parent = nullptr);
    ~RedseaSource() override;

    [[nodiscard]] bool tellsFrequency() const override { return false; }

protected:
    void attempt() override;
    void hangUp() override;

private:
    void read();
    void killGroup();

    QString m_command;
    QProcess *m_process = nullptr;
    qint64 m_group = 0; ///< of the processes of the command, as long as its shell is known
    LineSplitter m_lines;
};

} // namespace quillon
