#pragma once

namespace wendlore {

/// Makes the kernel refuse this process, for good, the calls that reach the network, other processes and
/// programs, that change files, and those that only administer a system. Needs a process that can gain no
/// rights any more; does nothing on a kind of processor that it does not know.
void filterDecoderCalls();

} // namespace wendlore
