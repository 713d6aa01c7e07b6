#include "State/ResourceBundle.h"

#include "Vault/DiskEntry.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>

using namespace Qt::StringLiterals;

namespace wendlore {

namespace {

constexpr auto bundleName = "WendloreKit_WendloreKit";

/// The folder of the file that holds this very function: a library that a host links, or the program itself.
FileURL libraryFolder()
{
    Dl_info code{};
    dladdr(reinterpret_cast<const void*>(&libraryFolder), &code);
    const QString file = QFileInfo(QFile::decodeName(code.dli_fname)).absoluteFilePath();
    return FileURL::file(file).deletingLastPathComponent();
}

FileURL findBundle()
{
    const auto application = FileURL::directory(QCoreApplication::applicationDirPath());
    const FileURL candidates[] = {application.appending(u"../share/wendlores"_s, true),
                                  application.appending(u"../../share/wendlores"_s, true), libraryFolder(),
                                  application};
    for (const FileURL& candidate : candidates) {
        const FileURL bundle = candidate.appendingBytes(QByteArray(bundleName) + ".bundle", true);
        if (diskEntry(bundle) == DiskEntry::Folder)
            return bundle.standardized();
    }
    qFatal("unable to find bundle named %s", bundleName);
}

} // namespace

const FileURL& resourceBundle()
{
    static const FileURL bundle = findBundle();
    return bundle;
}

} // namespace wendlore
