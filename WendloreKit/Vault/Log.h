#pragma once

#include <QLoggingCategory>

namespace wendlore {

/// What happens to files without the user being told.
Q_DECLARE_LOGGING_CATEGORY(filesLog)

} // namespace wendlore
