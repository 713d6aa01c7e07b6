#pragma once

#include "Vault/FileSystemCalls.h"

#include <QByteArrayList>

#include <functional>

namespace wendlore {

/// A file system that misbehaves as a test wants: fails, takes writes in small pieces, or lets something
/// happen between two calls.
class FaultyCalls final : public FileSystemCalls
{
public:
    /// Asked before each call with its number, from 1, and its name; what it gives is the error of the call.
    std::function<int(int number, const QByteArray& call)> interfere;
    size_t largestWrite = size_t(-1);
    QByteArrayList made;

protected:
    int refusal(const char* call) override
    {
        made.append(call);
        return interfere ? interfere(int(made.size()), made.last()) : 0;
    }
    size_t accepted(size_t size) override { return std::min(size, largestWrite); }
};

} // namespace wendlore
