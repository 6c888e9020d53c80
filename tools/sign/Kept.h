// What is made once and used by all threads.
#pragma once

#include <map>
#include <mutex>

namespace qm::sign {

template <class Key, class Value> class Kept {
  public:
    // The value for a key, made by the first thread that asks for it while the others wait. An exception of
    // make is the caller's, and the next one tries again.
    template <class Make> const Value& get(const Key& key, Make make) const {
        const std::lock_guard lock(m_mutex);
        const auto found = m_values.find(key);
        return found != m_values.end() ? found->second : m_values.emplace(key, make()).first->second;
    }

  private:
    mutable std::mutex m_mutex;
    mutable std::map<Key, Value> m_values;
};

} // namespace qm::sign
