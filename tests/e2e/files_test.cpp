// The file system of a controller through the exports.
#include "qm_sdk_dual.h"
#include "simulator/Simulator.h"

#include <gtest/gtest.h>

namespace qm::test {
namespace {

constexpr char kHost[] = "127.0.0.1";

ByteBuffer content(std::size_t length) {
    ByteBuffer data(length);
    for (std::size_t i = 0; i < length; ++i) data[i] = static_cast<Ouint8>(i * i >> 3);
    return data;
}

class Files : public testing::Test {
  protected:
    [[nodiscard]] Ouint16 port() const { return m_sim.port(); }
    int write(const char* name, const ByteBuffer& data, Ouint8 type = 0) const {
        return cmd_ofsWriteFile(kHost, port(), name, type, static_cast<Ouint32>(data.size()), 1, data.data());
    }
    sim::Simulator m_sim;
};

TEST_F(Files, ArriveAsTheyWereWritten) {
    for (const std::size_t length : {0U, 3U, 1025U, 1U << 20U}) {
        const ByteBuffer data = content(length);
        ASSERT_EQ(write("F001", data, 5), 0) << length;
        const auto stored = m_sim.file("F001");
        ASSERT_TRUE(stored) << length;
        EXPECT_EQ(stored->data, data);
        EXPECT_EQ(stored->type, 5);
    }
}

TEST_F(Files, AreListedWholeWhateverTheirNumber) {
    for (const int count : {0, 70}) {
        ASSERT_EQ(cmd_ofsFormat(kHost, port()), 0);
        for (int i = 0; i < count; ++i) {
            const std::string number = std::to_string(1000 + i);
            ASSERT_EQ(write(std::string("F").append(number, 1, 3).c_str(),
                            content(static_cast<std::size_t>(i) + 1)),
                      0);
        }
        GetDirBlock_G56 dir{};
        ASSERT_EQ(cmd_ofsReedDirBlock(kHost, port(), &dir), 0);
        ASSERT_EQ(int{dir.fileNumber}, count);
        for (int i = 0; i < count; ++i) {
            FileAttribute_G56 file{};
            ASSERT_EQ(cmd_getFileAttr(&dir, static_cast<Ouint16>(i), &file), 0);
            EXPECT_EQ(std::string(file.fileName, 4)[0], 'F');
            EXPECT_EQ(Ouint32{file.fileCRC}, m_sim.file(std::string(file.fileName, 4))->crc);
        }
        FileAttribute_G56 none{};
        EXPECT_EQ(cmd_getFileAttr(&dir, dir.fileNumber, &none), -1);
        EXPECT_EQ(cmd_ofs_freeDirBlock(&dir), 0);
    }
}

TEST_F(Files, OfSeveralKindsAreListedOnOneConnection) {
    write("F001", content(10), 0);
    write("D001", content(10), 9);
    const std::size_t before = m_sim.connections();
    GetDirBlock_G56 listings[] = {{9, 0, nullptr}, {7, 0, nullptr}, {0, 0, nullptr}};
    ASSERT_EQ(qm_list_files(kHost, port(), listings, 3), 0);
    EXPECT_EQ(m_sim.connections(), before + 1);
    std::vector<int> counts;
    for (GetDirBlock_G56& listing : listings) {
        counts.push_back(listing.fileNumber);
        cmd_ofs_freeDirBlock(&listing);
    }
    EXPECT_EQ(counts, (std::vector{1, 0, 1}));
    EXPECT_EQ(qm_list_files(kHost, port(), nullptr, 1), -1);
}

TEST_F(Files, OpenForReadingButBringNoData) {
    write("F001", content(10));
    char name[] = "F001";
    Ouint32 size = 7, crc = 7;
    EXPECT_EQ(cmd_ofsStartReedFile(kHost, port(), name, &size, &crc), 0);
    EXPECT_EQ(size, 7U) << "not delivered by this form";
    Ouint8 data[1024] = {1};
    EXPECT_EQ(cmd_ofsReedFileBlock(kHost, port(), name, data), -1);
    EXPECT_EQ(data[0], 1);
    char missing[] = "NONE";
    EXPECT_GT(cmd_ofsStartReedFile(kHost, port(), missing, &size, &crc), 1);
}

TEST_F(Files, AreCountedTracedAndDeleted) {
    EXPECT_EQ(cmd_ofsStartFileTransf(kHost, port()), 0);
    write("F001", content(3000));
    EXPECT_EQ(cmd_ofsEndFileTransf(kHost, port()), 0);
    Ouint8 rw = 9;
    char name[5] = {};
    Ouint32 crc = 0, offset = 0;
    ASSERT_EQ(cmd_ofsGetTransStatus(kHost, port(), &rw, name, &crc, &offset), 0);
    EXPECT_STREQ(name, "F001");
    EXPECT_EQ(offset, 3000U);
    Ouint32 total = 0, available = 0;
    ASSERT_EQ(cmd_ofsGetMemoryVolume(kHost, port(), &total, &available), 0);
    EXPECT_EQ(total, sim::FileSystem::kCapacity);
    EXPECT_EQ(available, total - 3000);
    EXPECT_EQ(cmd_ofsDeleteFormatFile(kHost, port(), -1, "F001"), -1);
    EXPECT_EQ(cmd_ofsDeleteFormatFile(kHost, port(), 1, "F001"), 0);
    EXPECT_TRUE(m_sim.files().empty());
}

TEST_F(Files, SetTheConfigurationWithItsChecksum) {
    ConfigFile config{};
    config.FileType = 1;
    config.ScreenWidth = 128;
    config.ScreenHeight = 32;
    EXPECT_GT(cmd_sendConfigFile(kHost, port(), &config), 1) << "of the other generation";
    const sim::Simulator five({.type = 0x0051});
    ASSERT_EQ(cmd_sendConfigFile(kHost, five.port(), &config), 0);
    FileCRC16_G56 check{reinterpret_cast<const Ouint8*>(&config), 36, 0};
    get_crc16(&check);
    EXPECT_EQ(Ouint16{config.CRC16}, Ouint16{check.fileCRC16});
    char name[] = "C000";
    Ouint32 size = 0, crc = 0;
    ASSERT_EQ(cmd_confStartReedFile(kHost, five.port(), name, &size, &crc), 0);
    EXPECT_EQ(size, 38U);

    ConfigFile_G6 config6{};
    EXPECT_EQ(cmd_sendConfigFile_G6(kHost, port(), &config6), 0);
    ASSERT_EQ(cmd_confStartReedFile(kHost, port(), name, &size, &crc), 0);
    EXPECT_EQ(size, 94U);
    Ouint8 block[8] = {};
    EXPECT_EQ(cmd_confReedFileBlock(kHost, port(), name, block), -1) << "it delivers nothing";
    EXPECT_EQ(cmd_confDeleteFormatFile(kHost, port(), 1, "C000"), 0);
    EXPECT_GT(cmd_confStartReedFile(kHost, port(), name, &size, &crc), 1);

    // The checksum is stored once the controller is there, also when writing then fails; not before.
    ConfigFile late{};
    late.FileType = 1;
    m_sim.set_fault(sim::Fault{.kind = sim::FaultKind::nack, .after = 1});
    EXPECT_GT(cmd_sendConfigFile(kHost, port(), &late), 1);
    EXPECT_NE(Ouint16{late.CRC16}, 0);
    ConfigFile never{};
    never.FileType = 1;
    m_sim.set_fault(sim::Fault{.kind = sim::FaultKind::close});
    EXPECT_EQ(cmd_sendConfigFile(kHost, port(), &never), -1);
    EXPECT_EQ(Ouint16{never.CRC16}, 0);
}

TEST_F(Files, ListingThatIsCutShortIsTheCallersAsFarAsItCame) {
    for (int i = 0; i < 80; ++i) write(std::to_string(1000 + i).c_str(), content(1));
    GetDirBlock_G56 dir{};
    const auto list_until = [&](unsigned answered) {
        dir.dataAddre = reinterpret_cast<Ouint8*>(8); // left over from somewhere
        dir.fileNumber = 5;
        m_sim.set_fault(sim::Fault{.kind = sim::FaultKind::close, .after = answered});
        EXPECT_EQ(cmd_ofsReedDirBlock(kHost, port(), &dir), -1) << answered;
    };
    for (const unsigned handshake_only : {0U, 1U}) {
        list_until(handshake_only);
        EXPECT_EQ(int{dir.fileNumber}, 5) << "nothing was announced";
        EXPECT_EQ(+dir.dataAddre, reinterpret_cast<Ouint8*>(8));
    }
    for (const unsigned blocks : {0U, 1U}) {
        list_until(2 + blocks);
        EXPECT_EQ(dir.fileNumber > 0, blocks > 0);
        EXPECT_LT(int{dir.fileNumber}, 80);
        FileAttribute_G56 file{};
        for (Ouint16 i = 0; i < dir.fileNumber; ++i) {
            ASSERT_EQ(cmd_getFileAttr(&dir, i, &file), 0);
            EXPECT_TRUE(m_sim.file(std::string(file.fileName, 4)));
        }
        EXPECT_EQ(cmd_ofs_freeDirBlock(&dir), 0);
    }
}

TEST_F(Files, ConfigurationsGoOutInBlocksOf1024WhateverTheBlockSize) {
    const ByteBuffer data(3072, 0x42);
    for (const Ouint16 length : {Ouint16{0}, Ouint16{512}, Ouint16{40000}}) {
        set_packetLen(length);
        const std::size_t before = m_sim.requests();
        EXPECT_EQ(cmd_confWriteFile(kHost, port(), "C001", 1, 3072, 1, data.data()), 0) << length;
        EXPECT_EQ(m_sim.requests() - before, 5U) << "handshake, start and three blocks";
        EXPECT_EQ(cmd_ofsWriteFile(kHost, port(), "P001", 0, 3072, 1, data.data()), length == 512 ? 0 : -1);
    }
    set_packetLen(1024);
}

TEST_F(Files, DemonstrationProgramIsEmpty) {
    EXPECT_EQ(program_pictureArea(5, kHost, port()), 0);
    const auto file = m_sim.file("P000");
    ASSERT_TRUE(file);
    const ByteBuffer header{0,    'P',  '0',  '0', '0', 0,    0,    1,  0, 0,
                            0xFF, 0xFF, 0xFF, 18,  18,  0xFF, 0xFF, 18, 18};
    ASSERT_GE(file->data.size(), header.size());
    EXPECT_EQ(ByteBuffer(file->data.begin(), file->data.begin() + 19), header);
}

} // namespace
} // namespace qm::test
