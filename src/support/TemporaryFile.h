// A temporary file, for bytes that are only taken as a file.
#pragma once

#include "support/bytes.h"

#include <string>

namespace qm {

// Readable by this user alone, and removed with the object.
class TemporaryFile {
  public:
    // Throws std::system_error when it cannot be written.
    explicit TemporaryFile(Bytes content);
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    [[nodiscard]] const std::string& path() const { return m_path; }

  private:
    std::string m_path;
    int m_owner; // process
};

} // namespace qm
