#pragma once

#include "Look/Sheet.h"
#include "Vault/FileURL.h"

class QLineEdit;

namespace wendlore {

class AppState;

/// Asks for the new name of an item, without its extension, which stays as it is.
class RenamePrompt final : public Sheet
{
    Q_OBJECT

public:
    RenamePrompt(AppState& state, const FileURL& item, QWidget* parent);

private:
    void save();

    AppState& m_state;
    FileURL m_renameTarget;
    QLineEdit* m_renameText;
};

} // namespace wendlore
