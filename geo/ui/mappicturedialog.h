#pragma once

#include "geo/ui/mappicture.h"
#include "platform/filecalls.h"

#include <QDialog>
#include <QSize>
#include <QString>

class QSpinBox;

namespace quillon {

/// Asks for the size of a picture, `mapPicture`.
class MapPictureDialog : public QDialog
{
    Q_OBJECT

public:
    MapPictureDialog(QSize offered, QWidget *parent);

    [[nodiscard]] QSize size() const;

private:
    QSpinBox *m_width;
    QSpinBox *m_height;
};

/// Asks for a size, offering this one, and a file, and writes the picture there whole or not at all: PNG, or
/// SVG for a name that ends in ".svg". The path, empty when cancelled. Throws the run-time error of what
/// failed.
QString saveMapPicture(QWidget *parent, const MapPicture &picture, QSize offered, FileCalls &calls);

} // namespace quillon
