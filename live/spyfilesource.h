#pragma once

#include "live/grouplines.h"
#include "live/receiversource.h"

#include <QFile>

#include <optional>

namespace quillon {

/// A recorded file of groups (`.spy`), played in its own time or at once. Its moments are taken as they are
/// written. It does not know the frequency.
class SpyFileSource : public ReceiverSource
{
    Q_OBJECT

public:
    SpyFileSource(QString path, bool atOnce, QObject *parent = nullptr);

    [[nodiscard]] bool tellsFrequency() const override { return false; }

protected:
    void attempt() override;
    void hangUp() override;

private:
    void play();
    [[nodiscard]] std::optional<SpyLine> nextGroup();
    void tellGroup(const SpyLine &line);

    QString m_path;
    bool m_atOnce;
    QFile m_file;
    QTimer m_next;
    std::optional<SpyLine> m_waiting;
    std::optional<qint64> m_time; ///< of the group before
};

} // namespace quillon
