#pragma once

#include "State/CloudLocations.h"

#include <QPointer>
#include <QWidget>

class QFileDialog;

namespace wendlore {

/// The menu "Plats:" of the panel that chooses a bucket's folder: takes the panel to a cloud folder.
class VaultLocationAccessory final : public QWidget
{
    Q_OBJECT

public:
    VaultLocationAccessory(std::vector<CloudLocation> locations, QFileDialog* panel);

    /// Shows the location of the menu's item `index`; the item for the folder used last changes nothing.
    void pick(int index);

private:
    QPointer<QFileDialog> m_panel;
    std::vector<CloudLocation> m_locations;
};

} // namespace wendlore
