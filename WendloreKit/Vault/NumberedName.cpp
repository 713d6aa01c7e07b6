#include "Vault/NumberedName.h"

namespace wendlore {

QString newItemName(const QString& stem, const QString& ending, int number)
{
    return number == 1 ? stem + ending : stem + u' ' + QString::number(number) + ending;
}

QString assetName(const FileURL& file, int number)
{
    if (number == 1)
        return file.lastPathComponent();
    return file.nameWithoutExtension() + u'-' + QString::number(number) + u'.' + file.pathExtension();
}

} // namespace wendlore
