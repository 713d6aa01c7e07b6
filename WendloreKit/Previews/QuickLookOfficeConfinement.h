#pragma once

#include "Decoder/CallFilter.h"
#include "Decoder/FileRules.h"

#include <QString>

namespace wendlore {

/// What the office program is left with while it reads a document that nobody has to trust: the system's
/// programs, libraries and fonts to read, one folder to write in, no network, no services of the desktop, and
/// limits on memory, time and the size of files.
class QuickLookOfficeConfinement final
{
public:
    /// `folder` is where `program` may write.
    QuickLookOfficeConfinement(const QString& program, const QString& folder);

    /// Takes it on for good. To be called in the new process, before the program starts there.
    void apply() const;

private:
    FileRules m_files;
    CallFilter m_calls;
};

} // namespace wendlore
