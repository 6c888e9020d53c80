// The request/answer engine under every command. A transport derives from it and supplies Send and Recv.
#pragma once

#include "cmdPacket/LedHVPacket.h"

#include <cstdint>

namespace qm {

// Data bytes in one block of a file write, for the whole process.
[[nodiscard]] Ouint16 packet_len();
void set_packet_len(Ouint16 len);

constexpr std::size_t kFileNameSize = 4;

// Network settings of a controller. Addresses are dotted texts.
struct S_setIP {
    Ouint8 mode;
    const char *ip, *subnetMask, *gateway;
    std::int16_t port;
    Ouint8 serverMode;
    const char* serverIP;
    std::int16_t serverPort;
    const char* password; // 8 bytes
    std::int16_t heartbeat;
    const char* netID; // 12 bytes
};

struct FileToWrite {
    const char* name; // kFileNameSize bytes
    Ouint8 type;
    Ouint8 overwrite;
    Bytes data;
};

// Whether a Wi-Fi module agrees: its answer contains "OK" or "ok".
[[nodiscard]] bool says_ok(Bytes answer);

class ON_command : public LedHVPacket {
  public:
    // Sends len bytes; 0 or -1.
    virtual int Send(const Ouint8* data, int len);
    // Receives one whole frame. dataLen: in the capacity of buff, out the bytes received; 0 or -1.
    virtual int Recv(Ouint8* buff, int& dataLen, int iTimeout);

    // One command, one answer. The status codes are those of Unpack, -1 from the transport included.
    int send_recv_cmd(Ouint8 cmd_group, Ouint8 cmd, Bytes cmd_data, Answer& recv_data);
    // The same with the answer's payload discarded.
    int send_cmd(Ouint8 cmd_group, Ouint8 cmd, Bytes cmd_data);

    // Payload inside one envelope, sent in pieces of 1,024 bytes: up to 32,768 bytes, and longer ones.
    int send_recv_cmd_1K(Ouint8 cmd_group, Ouint8 cmd, Bytes data, Answer& recv_data);
    int send_recv_cmd_1K2(Ouint8 cmd_group, Ouint8 cmd, Bytes data, Answer& recv_data);

    // A complete stuffed frame as the payload of an envelope, which is stuffed once more.
    int send_recv_cmd_6HnX(Ouint8 cmd_group, Ouint8 cmd, Bytes cmd_data, Answer& recv_data);
    int send_recv_5H_DynamicArea(Ouint8 cmd_group, Ouint8 cmd, Bytes cmd_data, Answer& recv_data);

    // Raw text to a Wi-Fi module: 0 when the answer contains "OK" or "ok".
    int send_AT_cmd(const char* cmdData, Ouint16 dataLen);
    // The same with the answer handed out. dataLen: in the bytes to send, out the bytes received; packet
    // holds 512 bytes, of which at most 511 are used.
    int send_AT_cmdRetData(const char* cmdData, Ouint16& dataLen, Ouint8* packet);

    // Commands. Each returns the status of its exchange; what was received goes to the caller's memory as far
    // as it reaches, and nothing else does.

    // Identity and network.
    int hv_cmd_ping(Answer& retData);
    int hv_cmd_networkSearch(Answer& retData);
    int hv_cmd_networkSearch_6G(Answer& retData);
    int hv_cmd_setMac(const char* mac);
    int hv_cmd_setIP(const S_setIP& settings);

    // Control.
    int hv_cmd_sys_reset();
    int hv_cmd_check_time();
    int set_clock(const std::tm& time);
    int hv_cmd_firmwareActivate(const char* firmwareName);
    int hv_cmd_coerce_OnOff(Ouint8 onOff);
    int hv_cmd_timing_onOff(Ouint8 groupNum, const Ouint8* data);
    int hv_cmd_cancel_timingOnOff();
    int hv_cmd_set_brightness(const Brightness& brightness);
    int hv_cmd_read_controllerID(Ouint8* controllerID);
    int hv_cmd_screen_lock(Ouint8 nonvolatile, Ouint8 lock);
    int hv_cmd_program_lock(Ouint8 nonvolatile, Ouint8 lock, const char* name, Ouint32 lockDuration);
    int hv_cmd_program_lock_6G(Ouint8 nonvolatile, Ouint8 lock, const char* name, Ouint32 lockDuration);
    int hv_cmd_check_controllerStatus(Answer& controllerStatus);
    int hv_cmd_set_password(const char* oldPassword, const char* newPassword);
    int hv_cmd_delete_password(const char* password);
    int hv_cmd_set_delayTime(std::int16_t delayTime);
    int hv_cmd_set_btnFunc(Ouint8 btnMode);
    int hv_cmd_set_timingReset(const TimingReset& cmdData);
    int hv_cmd_set_dispMode(Ouint8 dispMode);
    int hv_cmd_battie_time(Ouint8 mode, BattleTime& battieData);
    // There is no room for the value that comes: a proper answer is -1.
    int hv_cmd_get_stopwatch(Ouint8 mode);
    int hv_cmd_get_sensorBrightnessValue();
    int hv_cmd_set_speedAdjust(std::int16_t speed);
    int hv_cmd_set_screenAddress(std::int16_t address);

    // Whether the process's block size, and a number of file names, fit a frame; what does not is -1.
    static bool can_send_blocks();
    static bool can_name_files(std::int16_t fileNub);

    // Files; the conf_ commands are for configuration files.
    int hv_cmd_ofs_format();
    int hv_cmd_ofs_startFileTransf();
    int hv_cmd_ofs_endFileTransf();
    int hv_cmd_ofs_deleteFile(std::int16_t fileNub, const char* fileName);
    int hv_cmd_conf_deleteFile(std::int16_t fileNub, const char* fileName);
    int hv_cmd_ofs_getMemoryVolume(Ouint32& totalMemVolume, Ouint32& availableMemVolume);
    int hv_cmd_ofs_writeFile(const FileToWrite& file);
    int hv_cmd_conf_writeFile(const FileToWrite& file);
    int hv_cmd_ofs_startReedFile(char* fileName);
    int hv_cmd_conf_startReedFile(char* fileName, Ouint32& fileSize, Ouint32& fileCrc);
    // There is no room for the data that come: a proper answer is -1.
    int hv_cmd_ofs_reedFileBlock(const char* fileName);
    int hv_cmd_conf_reedFileBlock(const char* fileName);
    // dataAddre is allocated with malloc.
    int hv_cmd_ofs_reedDirBlock(GetDirBlock_G56& dirBlock);
    static int hv_cmd_freeDirBlock(Ouint8* dataAddre);
    int hv_cmd_ofs_getTransStatus(Ouint8& rw, char* fileName, Ouint32& fileCrc, Ouint32& fileOffset);

    Ouint8 _percentage = 0;

  protected:
    static constexpr int kTimeout = 3;        // seconds, of every receive
    static constexpr int kWholeFrame = 65536; // bytes

    // Builds the handshake's ping, sends it and learns the controller type from the answer.
    int ping_handshake(int recvTimeout);
    // Receives into the object's own buffer, at most capacity bytes.
    int receive_frame(int timeout, Bytes& frame, int capacity = kWholeFrame);

  private:
    // Codes and block size of one kind of files.
    struct WriteCodes {
        Ouint8 start, block;
        std::size_t blockSize;
        bool reports; // prints on the way
    };
    int write_file(const FileToWrite& file, const WriteCodes& codes);
    int write_block(const FileToWrite& file, const WriteCodes& codes, std::size_t offset, std::size_t length);
    int delete_files(Ouint8 code, std::int16_t fileNub, const char* fileName, std::size_t fieldSize);
    int start_read(Ouint8 code, char* fileName, Ouint32* fileSize, Ouint32* fileCrc);
    int read_block(Ouint8 code, const char* fileName);
    int read_directory(std::size_t announced, ByteBuffer& entries, Ouint16& count);
    int send_control(Ouint8 code, Bytes payload) { return send_cmd(hv_GRP_CONF, code, payload); }
    int program_lock(Ouint8 nonvolatile, Ouint8 lock, const char* name, Ouint32 lockDuration, bool reserved);

    int receive_answer(int sent, Ouint8 group, Ouint8 cmd, Answer& recv_data);

    ByteBuffer m_received;
    ByteBuffer m_block; // the file block at hand
};

} // namespace qm
