// Files in blocks, and directories that a controller need not be honest about.
#include "hex.h"
#include "memory_link.h"
#include "wire.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace qm::test {
namespace {

std::vector<SentRequest> requests(const MemoryLink& link) {
    std::vector<SentRequest> all;
    for (const ByteBuffer& piece : link.pieces) all.push_back(parse_request(piece));
    return all;
}

ByteBuffer content(std::size_t length) {
    ByteBuffer data(length);
    for (std::size_t i = 0; i < length; ++i) data[i] = static_cast<Ouint8>(i * 7);
    return data;
}

const Ouint16 kSizeAtStart = packet_len();

class BlockSize {
  public:
    explicit BlockSize(Ouint16 size) { set_packet_len(size); }
    BlockSize(const BlockSize&) = delete;
    BlockSize& operator=(const BlockSize&) = delete;
    ~BlockSize() { set_packet_len(kSizeAtStart); }
};

TEST(FileWrite, CutsAFileIntoBlocks) {
    EXPECT_EQ(kSizeAtStart, 1024);
    const struct {
        Ouint16 blockSize;
        std::size_t length;
        std::vector<std::size_t> blocks;
    } cases[] = {{1024, 0, {}},
                 {1024, 1, {1}},
                 {1024, 1024, {1024}},
                 {1024, 2049, {1024, 1024, 1}},
                 {512, 1500, {512, 512, 476}},
                 {1, 3, {1, 1, 1}}};
    for (const auto& c : cases) {
        const BlockSize size(c.blockSize);
        const ByteBuffer data = content(c.length);
        MemoryLink link;
        link.answers.assign(c.blocks.size() + 1, ack());
        ASSERT_EQ(link.hv_cmd_ofs_writeFile({"P001", 7, 1, data}), 0);
        const std::vector<SentRequest> sent = requests(link);
        ASSERT_EQ(sent.size(), c.blocks.size() + 1) << c.length;
        ByteBuffer joined;
        for (std::size_t i = 1; i < sent.size(); ++i) {
            ByteReader block(sent[i].payload);
            EXPECT_EQ(sent[i].code, 3);
            EXPECT_THAT(block.bytes(4), is_hex("50 30 30 31"));
            EXPECT_EQ(block.u8(), i + 1 == sent.size()) << "last-block flag";
            EXPECT_EQ(block.u32(), joined.size());
            EXPECT_EQ(block.left(), c.blocks[i - 1]);
            joined.insert(joined.end(), block.rest().begin(), block.rest().end());
        }
        EXPECT_EQ(joined, data);
    }
}

TEST(FileWrite, StartsWithLengthAndLastBytes) {
    const struct {
        ByteBuffer data;
        const char* start;
    } cases[] = {{hex("AA BB CC DD EE"), "50 30 30 31 07 05 00 00 00 01 BB CC DD EE"},
                 {hex("AA BB"), "50 30 30 31 07 02 00 00 00 01 00 00 AA BB"},
                 {{}, "50 30 30 31 07 00 00 00 00 01 00 00 00 00"}};
    for (const auto& c : cases) {
        for (const bool conf : {false, true}) {
            MemoryLink link;
            link.answers.assign(2, ack());
            const FileToWrite file{"P001", 7, 1, c.data};
            EXPECT_EQ(conf ? link.hv_cmd_conf_writeFile(file) : link.hv_cmd_ofs_writeFile(file), 0);
            EXPECT_EQ(requests(link).at(0).code, conf ? 11 : 2) << c.start;
            EXPECT_THAT(requests(link)[0].payload, is_hex(c.start));
        }
    }
}

TEST(FileWrite, EndsAtTheFirstFailureAndSaysSo) {
    const BlockSize size(10);
    const ByteBuffer data = content(35);
    const struct {
        std::size_t refused; // which request
        const char* printed;
    } cases[] = {{0, "g_packetLen ======= 10 \n"},
                 {2, "g_packetLen ======= 10 \ndataLen-oldLen ======= 10 \n"},
                 {4, "g_packetLen ======= 10 \ndataLen-oldLen ======= 5 \n"}};
    for (const auto& c : cases) {
        MemoryLink link;
        link.answers.assign(c.refused, ack());
        link.answers.push_back(nack(6));
        EXPECT_EQ(printed_by([&] {
                      EXPECT_EQ(link.hv_cmd_ofs_writeFile({"P001", 0, 0, data}), 6);
                  }),
                  c.printed);
        EXPECT_EQ(link.pieces.size(), c.refused + 1) << c.printed;
    }
    MemoryLink conf;
    EXPECT_EQ(printed_by([&] {
                  EXPECT_EQ(conf.hv_cmd_conf_writeFile({"C000", 0, 0, data}), -1);
              }),
              "")
        << "configuration files are written quietly";
}

TEST(FileWrite, RefusesBlocksThatNoFrameCarries) {
    const ByteBuffer data = content(40000);
    for (const Ouint16 blockSize : {Ouint16{0}, Ouint16{32759}, Ouint16{65535}}) {
        const BlockSize size(blockSize);
        MemoryLink link;
        EXPECT_EQ(link.hv_cmd_ofs_writeFile({"P001", 0, 0, data}), -1);
        EXPECT_TRUE(link.pieces.empty()) << blockSize;
    }
    const BlockSize size(32758);
    MemoryLink link;
    link.answers.assign(3, ack());
    EXPECT_EQ(link.hv_cmd_ofs_writeFile({"P001", 0, 0, data}), 0);
}

// A directory block: last flag, two bytes, entries, one byte, and that many entries of 13 bytes.
ByteBuffer block(Ouint8 last, Ouint8 count, Ouint8 fill, std::size_t length) {
    ByteBuffer payload{last, 0, 0, count, 0};
    payload.insert(payload.end(), length, fill);
    return answer_to(0xA1, 7, payload);
}
ByteBuffer announce(Ouint16 files) {
    return answer_to(0xA1, 6, {static_cast<Ouint8>(files), static_cast<Ouint8>(files >> 8)});
}

struct Listing {
    int status;
    ByteBuffer entries;
    std::size_t requests;
};
Listing list(std::deque<ByteBuffer> answers) {
    MemoryLink link;
    link.answers = std::move(answers);
    GetDirBlock_G56 dir{};
    Listing listing{};
    listing.status = link.hv_cmd_ofs_reedDirBlock(dir);
    if (listing.status == 0) listing.entries.assign(dir.dataAddre, dir.dataAddre + 13 * dir.fileNumber);
    std::free(dir.dataAddre);
    listing.requests = link.pieces.size();
    return listing;
}

TEST(Directory, AsksForEachBlockByTheNextEntry) {
    MemoryLink link;
    link.answers = {announce(3), block(false, 2, 0xAA, 26), block(true, 1, 0xBB, 13)};
    GetDirBlock_G56 dir{};
    dir.fileType = 5;
    EXPECT_EQ(link.hv_cmd_ofs_reedDirBlock(dir), 0);
    EXPECT_THAT(Bytes(dir.dataAddre, 13U * dir.fileNumber), is_hex("AA*26 BB*13"));
    std::free(dir.dataAddre);
    const std::vector<SentRequest> sent = requests(link);
    ASSERT_EQ(sent.size(), 3U);
    EXPECT_THAT(sent[0].payload, is_hex("05 20"));
    EXPECT_THAT(sent[1].payload, is_hex("00 00"));
    EXPECT_THAT(sent[2].payload, is_hex("02 00"));
}

TEST(Directory, SurvivesALyingController) {
    const std::deque<ByteBuffer> endless(300, block(false, 0, 0, 0));
    std::deque<ByteBuffer> empty{announce(1)};
    empty.insert(empty.end(), endless.begin(), endless.end());
    std::deque<ByteBuffer> flood{announce(1)};
    for (int i = 0; i < 300; ++i) flood.push_back(block(false, 255, 1, 900));
    std::deque<ByteBuffer> full{announce(0xFFFF)};
    full.insert(full.end(), 256, block(0, 255, 0, 0));
    full.push_back(block(2, 255, 0, 0)); // any flag but 0 is the last block's
    const struct {
        const char* what;
        std::deque<ByteBuffer> answers;
        int status;
        const char* entries;
    } cases[] = {
        {"more entries than announced", {announce(1), block(true, 3, 0xCC, 39)}, 0, "CC*39"},
        {"fewer entries than announced", {announce(9), block(true, 1, 0xCC, 13)}, 0, "CC*13"},
        {"entries that did not come", {announce(2), block(true, 2, 0xCC, 20)}, 0, "CC*20 00*6"},
        {"bytes that belong to no entry", {announce(1), block(true, 1, 0xCC, 30)}, 0, "CC*13"},
        {"no entry at all", {announce(0), block(true, 0, 0, 0)}, 0, ""},
        {"no announcement", {answer_to(0xA1, 6, {1})}, -1, ""},
        {"an acknowledgement for an announcement", {ack()}, -1, ""},
        {"a block under 5 bytes", {announce(1), answer_to(0xA1, 7, {1, 0, 0, 1})}, -1, ""},
        {"empty blocks without end", empty, -1, ""},
        {"as many entries as can be counted", full, 0, "00*851955"},
        {"more entries than can be counted", flood, -1, ""},
    };
    for (const auto& c : cases) {
        const Listing listing = list(c.answers);
        EXPECT_EQ(listing.status, c.status) << c.what;
        EXPECT_THAT(listing.entries, is_hex(c.entries)) << c.what;
        EXPECT_LT(listing.requests, 270U) << c.what;
    }
}

} // namespace
} // namespace qm::test
