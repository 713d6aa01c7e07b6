#pragma once

namespace wendlore {

/// Takes from this process for good what reading the file that it was given does not need: other files than
/// the system's libraries and fonts, writing, the network, other processes, and more memory than a large file
/// takes. To be called before there is a second thread. What the kernel does not offer is left out.
void confineDecoder();

} // namespace wendlore
