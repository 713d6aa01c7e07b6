#include "State/NavigationHistory.h"

#include <algorithm>

namespace wendlore {

bool NavigationHistory::record(const std::optional<FileURL>& previous, const std::optional<FileURL>& current)
{
    if (!current || previous == current)
        return false;
    m_entries.resize(m_index + 1);
    if (m_entries.empty() || m_entries.back() != *current)
        m_entries.push_back(*current);
    m_index = count() - 1;
    return true;
}

std::optional<FileURL> NavigationHistory::back(const Exists& exists)
{
    if (!canGoBack())
        return std::nullopt;
    --m_index;
    return apply(Step::back, exists);
}

std::optional<FileURL> NavigationHistory::forward(const Exists& exists)
{
    if (!canGoForward())
        return std::nullopt;
    ++m_index;
    return apply(Step::forward, exists);
}

std::optional<FileURL> NavigationHistory::apply(Step step, const Exists& exists)
{
    while (m_index >= 0 && m_index < count()) {
        const FileURL& entry = m_entries[m_index];
        if (exists(entry))
            return entry;
        m_entries.erase(m_entries.begin() + m_index);
        if (step == Step::back)
            --m_index;
    }
    m_index = std::min(count() - 1, m_index);
    return std::nullopt;
}

} // namespace wendlore
