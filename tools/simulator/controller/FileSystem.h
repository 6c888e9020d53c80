// The files of a controller, in two families that know nothing of each other, and their transfers. What is
// refused changes nothing, with one exception: a file that turns out to be wrong at its end is given up.
#pragma once

#include "simulator/protocol/ErrorValue.h"
#include "support/bytes.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace qm::sim {

enum class FileFamily : std::uint8_t { ordinary, configuration };

// The configuration proper, of the one or the other generation; its checksum is looked at.
constexpr const char* kConfigurationFile = "C000";
constexpr std::size_t kConfiguration5 = 38, kConfiguration6 = 94;

struct StoredFile {
    FileFamily family = FileFamily::ordinary;
    std::string name; // 4 characters, any bytes
    std::uint8_t type = 0;
    ByteBuffer data;
    std::uint32_t crc = 0;      // as it was announced: the last 4 bytes, which close a program with its CRC
    std::uint32_t data_crc = 0; // CRC-32 of the data
    std::uint64_t version = 0;  // differs from write to write
};

// The start of a write.
struct Announcement {
    std::string name;
    std::uint8_t type = 0;
    std::uint32_t length = 0;
    bool overwrite = false;
    std::array<std::uint8_t, 4> tail{}; // the last bytes of the file; a shorter file stands at its end
};

struct Block {
    std::string name;
    bool last = false;
    std::uint32_t offset = 0;
    Bytes data;
};

// The latest transfer.
struct Transfer {
    bool writes = false;
    std::string name; // empty when there was none
    std::uint32_t crc = 0, offset = 0;
};

class FileSystem {
  public:
    using Key = std::pair<FileFamily, std::string>;
    using Result = std::optional<ErrorValue>; // nothing when it is done

    static constexpr std::uint32_t kCapacity = 16U << 20U; // bytes
    static constexpr std::size_t kMostFiles = 4096;
    static constexpr std::size_t kNameSize = 4;

    // Takes a file as it was kept over a restart.
    void restore(StoredFile file);

    Result start_write(FileFamily family, const Announcement& announcement);
    Result write_block(FileFamily family, const Block& block);
    // The file, and the transfer status set to reading at the offset; null when there is none.
    const StoredFile* read(FileFamily family, const std::string& name, std::uint32_t offset);
    // All or none. A name that was cut short stands for the one file that begins with it.
    Result remove(FileFamily family, const std::vector<std::string>& names);
    // Removes all ordinary files.
    void format();
    void begin_transfer() { m_transferring = true; }
    // Gives up what has not arrived whole.
    void end_transfer();

    [[nodiscard]] const StoredFile* find(FileFamily family, const std::string& name) const;
    // All, in the order of family and name.
    [[nodiscard]] const std::map<Key, StoredFile>& all() const { return m_files; }
    [[nodiscard]] std::vector<StoredFile> copies() const;
    [[nodiscard]] const Transfer& transfer() const { return m_transfer; }
    [[nodiscard]] bool transferring() const { return m_transferring; }
    [[nodiscard]] std::uint32_t available() const;
    // Differs once a file has been written or removed.
    [[nodiscard]] std::uint64_t version() const { return m_version; }

  private:
    struct Pending {
        FileFamily family;
        Announcement announcement;
        ByteBuffer data;
    };

    [[nodiscard]] std::optional<Key> resolve(FileFamily family, const std::string& name) const;
    Result finish();

    std::map<Key, StoredFile> m_files;
    std::optional<Pending> m_pending;
    Transfer m_transfer;
    bool m_transferring = false;
    std::uint64_t m_version = 0;
};

} // namespace qm::sim
