#include "host.h"

#include "wire.h"

namespace qm::sim::test {

Answer answer_in(Bytes frame) {
    const ByteBuffer body = qm::test::unstuff(frame);
    ByteReader reader(body);
    reader.skip(4);
    const std::size_t header = reader.u8() == 5 ? 27 : 28;
    reader.skip(header - 5 + 1);
    Answer answer;
    answer.group = reader.u8();
    answer.cmd = reader.u8();
    reader.skip(2);
    answer.error = reader.u16();
    const std::size_t length = reader.u16();
    EXPECT_TRUE(reader.ok());
    EXPECT_EQ(reader.left(), length);
    answer.payload.assign(reader.rest().begin(), reader.rest().end());
    return answer;
}

ByteBuffer command_frame(std::uint8_t group, std::uint8_t cmd, Bytes payload) {
    ByteBuffer command;
    ByteWriter(command).u8(1).u8(group).u8(cmd).u16(0).bytes(payload);
    return envelope_around(command);
}

Answer Host::ask(std::uint8_t group, std::uint8_t cmd, Bytes payload) {
    return answer_in(m_client.ask(command_frame(group, cmd, payload)));
}

unsigned Host::write(const std::string& name, Bytes data, std::uint8_t type, bool overwrite,
                     bool configuration) {
    ByteBuffer start, block;
    ByteWriter(start).text(name.data(), 4).u8(type).u32(static_cast<Ouint32>(data.size())).u8(overwrite);
    ByteWriter(start).bytes(data.last(4));
    ByteWriter(block).text(name.data(), 4).u8(1).u32(0).bytes(data);
    const Answer answer = ask(0xA1, configuration ? 11 : 2, start);
    if (!answer.acknowledged()) return answer.error;
    return ask(0xA1, configuration ? 12 : 3, block).error;
}

} // namespace qm::sim::test
