#pragma once

#include <QObject>
#include <QStringList>
#include <QUrl>

namespace quillon::test {

/// Takes what the program hands to the desktop, as long as it lives: the URLs of files and of pages.
class Opened : public QObject
{
    Q_OBJECT

public:
    Opened();
    ~Opened() override;

    /// What was opened since the last call, files as their path.
    [[nodiscard]] QStringList take();
    /// The same as URLs, encoded as the desktop gets them.
    [[nodiscard]] QStringList takeEncoded();

public Q_SLOTS:
    void open(const QUrl &url);

private:
    QList<QUrl> m_opened;
};

} // namespace quillon::test
