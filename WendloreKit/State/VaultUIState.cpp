#include "State/VaultUIState.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr auto selectedFileKey = "selectedFilePath"_L1;
constexpr auto selectedFolderKey = "selectedFolderPath"_L1;
constexpr auto sidebarWidthKey = "sidebarWidth"_L1;

/// Reads an optional member; false when it has another type.
bool read(const QJsonValue& json, std::optional<QString>& value)
{
    if (json.isString())
        value = json.toString();
    return json.isString() || json.isUndefined() || json.isNull();
}

bool read(const QJsonValue& json, std::optional<double>& value)
{
    if (json.isDouble())
        value = json.toDouble();
    return json.isDouble() || json.isUndefined() || json.isNull();
}

bool read(const QJsonValue& json, VaultUIState& state)
{
    const QJsonObject object = json.toObject();
    return json.isObject() && read(object[selectedFileKey], state.selectedFilePath) &&
           read(object[selectedFolderKey], state.selectedFolderPath) &&
           read(object[sidebarWidthKey], state.sidebarWidth);
}

} // namespace

VaultUIStates vaultUIStatesFromJson(const QByteArray& json)
{
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    VaultUIStates states;
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        if (!read(entry.value(), states[entry.key()]))
            return {};
    }
    return states;
}

QByteArray toJson(const VaultUIStates& states)
{
    QJsonObject object;
    for (auto entry = states.begin(); entry != states.end(); ++entry) {
        QJsonObject state;
        if (entry->selectedFilePath)
            state[selectedFileKey] = *entry->selectedFilePath;
        if (entry->selectedFolderPath)
            state[selectedFolderKey] = *entry->selectedFolderPath;
        if (entry->sidebarWidth)
            state[sidebarWidthKey] = *entry->sidebarWidth;
        object[entry.key()] = state;
    }
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace wendlore
