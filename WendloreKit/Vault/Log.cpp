#include "Vault/Log.h"

namespace wendlore {

Q_LOGGING_CATEGORY(filesLog, "wendlore.files")

} // namespace wendlore
