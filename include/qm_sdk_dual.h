/*
 * qm_sdk_dual.h - the C interface of libqm_sdkDual: drive LED display controllers of generations 5 and 6.
 *
 * Conventions that hold for every call:
 *
 *  1. Every call but those with the prefix qm_ returns an int status, 0 for success; the codes stand in
 *     QM_STATUS_MAP below. Any other positive status, 2 to 65,535, is the error value with which the
 *     controller refused (NACK), unless the call says otherwise; a refusal with the value 0 or 1 cannot be
 *     told from success or a cut answer. A null pointer where a pointer is needed gives -1; nothing is sent
 *     and nothing is changed. qm_last_error says in words why a call did not succeed.
 *  2. Every call that talks to a controller opens its own connection, blocks the calling thread until the
 *     controller has answered or a time-out has passed, and closes the connection. Connecting waits at most
 *     3 s, and so do each sending and each receiving. A connection rests 5 ms after it was made and 10 ms
 *     after it was closed. Nothing is retried. Addresses are dotted IPv4 texts, such as "192.168.0.199".
 *  3. Texts are NUL-terminated bytes, UTF-8 unless said otherwise. Text that is not valid UTF-8, or lies
 *     outside the Basic Multilingual Plane, is shown with U+FFFD in its place.
 *  4. Records are packed and little-endian. Pointers inside them are read during the call only and stay the
 *     caller's. Coordinates and sizes are pixels, counted from the top left corner of the screen.
 *  5. Any number of threads may call at once. Calls on different controllers run in parallel on the network;
 *     rendering is serialised. The screen settings (program_setScreenParams_G56) and the block size
 *     (set_packetLen) are shared by the whole process.
 *  6. Diagnostics are printed on standard output; what a call prints is said with it. A host may take them
 *     with qm_set_message_handler.
 *  7. A colour is a palette index (0 black, 1 red, 2 green, 3 yellow, 4 blue, 5 magenta, 6 cyan, 7 white)
 *     when below 8, and 0xRRGGBB otherwise.
 */
#ifndef QM_SDK_DUAL_H
#define QM_SDK_DUAL_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

/* Version of this header; qm_version tells the library's. */
#define QM_VERSION_MAJOR 1
#define QM_VERSION_MINOR 0
#define QM_VERSION_PATCH 0

#if defined(__GNUC__)
#define QM_API __attribute__((visibility("default")))
#else
#define QM_API
#endif

/* Enumerations are 32 bits wide in records and signatures, in C and in C++. */
#ifdef __cplusplus
#define QM_ENUM(name) enum name : uint32_t
#define QM_NOTHROW noexcept
#else
#define QM_ENUM(name)                                                                                        \
    typedef uint32_t name;                                                                                   \
    enum
#define QM_NOTHROW
#endif

/* Fails to compile when a record has not the size that the controllers' protocol gives it. */
#define QM_RECORD_SIZE(record, bytes) typedef char record##_size_check[sizeof(record) == (bytes) ? 1 : -1]

typedef uint8_t Ouint8;
typedef uint16_t Ouint16;
typedef uint32_t Ouint32;
typedef int8_t Oint8;
typedef int32_t Oint32;

/* ---- Status codes ---------------------------------------------------------------------------------- */

/* Every status of the library, X(name, value, meaning). */
#define QM_STATUS_MAP(X)                                                                                     \
    X(QM_OK, 0, "success")                                                                                   \
    X(QM_TRUNCATED, 1, "the answer was longer than the caller's buffer and was cut")                         \
    X(QM_FAILED, -1, "no connection, no usable answer in time, a rejected argument, or no memory")           \
    X(QM_BAD_HEADER, -2, "the header checksum of the answer is wrong")                                       \
    X(QM_BAD_CRC, -3, "the CRC of the answer is wrong, or its lengths claim more than it holds")             \
    X(QM_BAD_VERSION, -4, "the answer speaks an unknown version of the link protocol")                       \
    X(QM_WRONG_ANSWER, -5, "the answer belongs to another command")

#define QM_STATUS_ENUMERATOR(name, value, meaning) name = (value),
enum qm_status { QM_STATUS_MAP(QM_STATUS_ENUMERATOR) QM_STATUS_END_ = 2 };
#undef QM_STATUS_ENUMERATOR

/* ---- Controllers and screens ----------------------------------------------------------------------- */

/* Controller series: the low byte of a controller type; the high byte is a variant of the series. */
QM_ENUM(VEMAR_CARD_TYPE){QM_G5_T0 = 0x50, QM_G5_T1 = 0x51, QM_G5_T2 = 0x52, QM_G5_T3 = 0x53, QM_5H = 0x54,
                         QM_G5_T5 = 0x55, QM_WV = 0x58,    QM_X2 = 0x5E,    QM_X1 = 0x5F,    QM_G6_T0 = 0x62,
                         QM_G6_T1 = 0x63, QM_G6_T2 = 0x64, QM_G6_T3 = 0x66, QM_6H = 0x74,    QM_NO = 0xFE};

/* Colour type of the LED screen. */
QM_ENUM(E_ScreenColor_G56){
    SCREEN_COLOR_SINGLE = 1,   /* one LED a pixel */
    SCREEN_COLOR_DOUBLE = 2,   /* red and green */
    SCREEN_COLOR_THREE = 3,    /* red, green and blue, each on or off */
    SCREEN_COLOR_FULLCOLOR = 4 /* red, green and blue in grades */
};

/* Which of the two LED colours of a double-colour screen is wired as "red". */
QM_ENUM(E_DoubleColorPixel_G56){DOUBLE_COLOR_PIXTYPE_1 = 1, DOUBLE_COLOR_PIXTYPE_2 = 2};

/* Palette of colour values below 8. */
QM_ENUM(E_Color_G56){eBlack = 0, eRed = 1,     eGreen = 2, eYellow = 3,
                     eBlue = 4,  eMagenta = 5, eCyan = 6,  eWhite = 7};

/* Text on one line that is cut into pages, or wrapped into lines. One line that runs is cut every area width,
 * through characters, too; one that stands still is cut between words, and inside a word only when the word
 * alone is wider than the area. */
QM_ENUM(E_arrMode){SINGLELINE = 0, MULTILINE = 1};

/* Writing direction: lines from left to right, or characters stacked into columns from left to right. */
QM_ENUM(E_txtDirection){eHorizontal = 0, eVertical = 1};

/* ---- Records --------------------------------------------------------------------------------------- */

/*
 * "raw" marks codes and units of the controllers' own: the library passes them on as they are, and the
 * controller's manual explains them. A number may have any value of its type where no range is given. Texts
 * are filled up with zeros and not terminated when they fill their field. Flags are 0 or 1, reserved bytes 0.
 * "As in X" means the field of that name there; on a line of its own it holds down to the next empty line.
 */

#pragma pack(push, 1)

/* Bytes to check (the caller's) and their CRC-16/ARC, written by get_crc16. */
typedef struct FileCRC16_G56 {
    const Ouint8* fileAddre; /* in: the bytes; may be null when there are none */
    Ouint32 fileLen;         /* in: their number */
    Ouint16 fileCRC16;       /* out */
} FileCRC16_G56;
QM_RECORD_SIZE(FileCRC16_G56, 14);

/* Bytes to check (the caller's) and their CRC-32, written by get_crc32. */
typedef struct FileCRC32_G56 {
    /* as in FileCRC16_G56 */
    const Ouint8* fileAddre;
    Ouint32 fileLen;

    Ouint32 fileCRC32; /* out */
} FileCRC32_G56;
QM_RECORD_SIZE(FileCRC32_G56, 16);

/* What a controller says of itself when it is pinged. */
typedef struct Ping_data {
    Ouint16 ControllerType;    /* low byte: VEMAR_CARD_TYPE, high byte: variant */
    Ouint8 FirmwareVersion[8]; /* text */
    Ouint8 ScreenParaStatus;   /* whether the screen is configured, raw */
    Ouint16 uAddress;          /* screen address, as cmd_setScreenAddress sets it */
    Ouint8 Baudrate;           /* of the serial line, raw */
    Ouint16 ScreenWidth;       /* pixels */
    Ouint16 ScreenHeight;      /* pixels */
    Ouint8 Color;              /* E_ScreenColor_G56 */
    Ouint8 CurrentBrigtness;   /* at this moment, raw; 0 to 15 as a rule */
    Ouint8 CurrentOnOffStatus; /* screen: 0 off, 1 on */
    Ouint16 ScanConfNumber;    /* of the scan configuration in use, raw */
    Ouint8 reversed[9];        /* reserved */
    Ouint8 ipAdder[20]; /* dotted address at which the controller was found (searches only), NUL-terminated */
} Ping_data;
QM_RECORD_SIZE(Ping_data, 52);

/* What a controller type tells: see qm_controller_type. */
typedef struct QM_ControllerType {
    char model[8];       /* of the series, such as "G6-T0", NUL-terminated; empty when it is not known */
    Ouint8 generation;   /* of protocol, programs and areas: 5 or 6; 0 for neither */
    Ouint8 transferMode; /* of pixels: 0 and 4 as bit planes, 3 as 16-bit and 5 as 24-bit full colour */
} QM_ControllerType;
QM_RECORD_SIZE(QM_ControllerType, 10);

/* How a text is to be set: see qm_measure_text. */
typedef struct qm_text_style {
    const char* font;         /* family, "auto", or font file, as the calls that add texts take it */
    Ouint16 points;           /* size; 12 are 16 pixels */
    bool bold;                /* whether it is bold */
    bool italic;              /* whether it is italic */
    E_arrMode arrMode;        /* one line, or wrapped to the width */
    E_txtDirection direction; /* as in rows, or stacked into columns */
    Ouint16 spacing;          /* pixels added between characters */
    Ouint8 displayMode;       /* of the page: 4 runs to the left, 38 and 40 to the right */
} qm_text_style;
QM_RECORD_SIZE(qm_text_style, sizeof(char*) + 15);

/* What a text takes: see qm_measure_text. */
typedef struct qm_text_extent {
    Ouint32 pages;        /* how many it makes */
    Ouint32 width;        /* of the ink, pixels: of the whole strip when it runs, else of the widest page */
    Ouint32 height;       /* of the ink, pixels: likewise, of the highest page */
    Ouint32 missing;      /* characters that no font has */
    Ouint32 firstMissing; /* code point of the first of them; 0 when there is none */
    Ouint16 strike;       /* pixels of the bitmaps of the font named next; 0 when it draws outlines */
    char family[64];      /* of the font that draws most of the text, NUL-terminated */
    char file[256];       /* its file, NUL-terminated */
} qm_text_extent;
QM_RECORD_SIZE(qm_text_extent, 342);

/* What a generation-5 controller says of its network settings. */
typedef struct heartbeatData {
    Ouint8 password[8];   /* for the server, as in cmd_udpSetIP */
    Ouint8 ip[4];         /* 192.168.0.199 is C0 A8 00 C7, as in all addresses */
    Ouint8 subNetMask[4]; /* likewise */
    Ouint8 gate[4];       /* gateway, likewise */
    int16_t port;         /* TCP port; above 32,767 the same 16 bits, negative */
    Ouint8 mac[6];        /* in the order in which it is written */
    Ouint8 netID[12];     /* network ID, as in cmd_udpSetIP */
} heartbeatData;
QM_RECORD_SIZE(heartbeatData, 40);

/* What a generation-6 controller says of its network and its screen. */
typedef struct NetSearchCmdRet {
    char Mac[6];                  /* in the order in which it is written */
    Ouint8 IP[4];                 /* 192.168.0.199 is C0 A8 00 C7, as in all addresses */
    Ouint8 SubNetMask[4];         /* likewise */
    Ouint8 Gate[4];               /* gateway, likewise */
    Ouint8 Port[2];               /* TCP port, low byte first */
    Oint8 IPMode;                 /* mode of cmd_udpSetIP, raw */
    Oint8 IPStatus;               /* state of the address, raw */
    Oint8 ServerMode;             /* serverMode of cmd_udpSetIP, raw */
    Ouint8 ServerIPAddress[4];    /* server that the controller reports to */
    int16_t ServerPort;           /* its port; above 32,767 the same 16 bits, negative */
    char ServerAccessPassword[8]; /* text; password of cmd_udpSetIP */
    int16_t HeartBeatInterval;    /* between two reports, raw; heartbeat of cmd_udpSetIP */
    char CustomID[12];            /* text of the owner's */
    char BarCode[16];             /* text; the controller's */
    int16_t ControllerType;       /* as in Ping_data, as are the next nine */
    char FirmwareVersion[8];      /* text */
    Oint8 ScreenParaStatus;       /* raw */
    int16_t Address;              /* screen address: uAddress of Ping_data */
    Oint8 Baudrate;               /* raw */
    int16_t ScreenWidth;          /* pixels */
    int16_t ScreenHeight;         /* pixels */
    Oint8 Color;                  /* E_ScreenColor_G56 */
    Oint8 BrightnessAdjMode;      /* BrightnessMode of Brightness */
    Oint8 CurrentBrigtness;       /* raw */
    Oint8 TimingOnOff;            /* 1: a timer switches the screen (cmd_timingOnOff) */
    Oint8 CurrentOnOffStatus;     /* 0 off, 1 on */
    int16_t ScanConfNumber;       /* as in Ping_data */
    Oint8 RowsPerChanel;          /* rows on one channel, raw */
    Oint8 GrayFlag;               /* whether the screen shows grades, raw */
    char UnitWidth[2];            /* raw */
    Oint8 modeofdisp;             /* display mode (cmd_setDispMode), raw */
    Oint8 NetTranMode;            /* transfer mode of the network, raw */
    Oint8 PackageMode;            /* packet mode, raw */
    Oint8 BarcodeFlag;            /* whether BarCode holds one, raw */
    int16_t ProgramNumber;        /* number of programs in the controller */
    Oint32 CurrentProgram;        /* the four characters of its name, the first in the low byte */
    Oint8 ScreenLockStatus;       /* 1: locked (cmd_screenLock) */
    Oint8 ProgramLockStatus;      /* 1: locked (cmd_programLock) */
    Oint8 RunningMode;            /* raw */
    Oint8 RTCStatus;              /* of the clock, raw */
    int16_t RTCYear;              /* BCD: 0x2024 */
    Oint8 RTCMonth;               /* BCD, 0x01 to 0x12 */
    Oint8 RTCDate;                /* day of the month, BCD, 0x01 to 0x31 */
    Oint8 RTCHour;                /* BCD, 0x00 to 0x23 */
    Oint8 RTCMinute;              /* BCD, 0x00 to 0x59 */
    Oint8 RTCSecond;              /* BCD, 0x00 to 0x59 */
    Oint8 RTCWeek;                /* 0 Sunday to 6 Saturday */
    char Temperature1[3];         /* first sensor, raw */
    char Temperature2[3];         /* second sensor, raw */
    char Humidity[2];             /* raw */
    char Noise[2];                /* raw */
    Oint8 Reserved;               /* reserved */
    Oint8 LogoFlag;               /* of the logo, raw */
    int16_t PowerOnDelay;         /* raw (cmd_setDelayTime) */
    int16_t WindSpeed;            /* raw */
    int16_t WindDirction;         /* raw */
    int16_t PM2_5;                /* fine dust, raw */
    int16_t PM10;                 /* coarse dust, raw */
    int16_t ExtendParaLen;        /* bytes of further parameters */
    char ControllerName[16];      /* text, as in ConfigFile_G6 */
    char ScreenLocation[44];      /* text: where the screen stands */
    char NameLocalationCRC32[4];  /* CRC-32 of the two, low byte first */
} NetSearchCmdRet;
QM_RECORD_SIZE(NetSearchCmdRet, 206);

/* The same from a controller with a web server. */
typedef struct NetSearchCmdRet_Web {
    /* as in NetSearchCmdRet */
    char Mac[6];
    Ouint8 IP[4];
    Ouint8 SubNetMask[4];
    Ouint8 Gate[4];
    Ouint8 Port[2];
    Oint8 IPMode;
    Oint8 IPStatus;
    Oint8 ServerMode;
    Ouint8 ServerIPAddress[4];
    int16_t ServerPort;
    char ServerAccessPassword[8];
    int16_t HeartBeatInterval;
    char CustomID[12];

    char WebUserID[128];         /* text: the user at the web server */
    Oint32 GroupNum;             /* number of the controller's group, raw */
    Oint8 DomainFlag;            /* whether DomainName is used, raw */
    char DomainName[128];        /* text */
    char WebControllerName[128]; /* text: the controller's name at the web server */

    /* as in NetSearchCmdRet */
    char BarCode[16];
    int16_t ControllerType;
    char FirmwareVersion[8];
    Oint8 ScreenParaStatus;
    int16_t Address;
    Oint8 Baudrate;
    int16_t ScreenWidth;
    int16_t ScreenHeight;
    Oint8 Color;
    Oint8 BrightnessAdjMode;
    Oint8 CurrentBrigtness;
    Oint8 TimingOnOff;
    Oint8 CurrentOnOffStatus;
    int16_t ScanConfNumber;
    Oint8 RowsPerChanel;
    Oint8 GrayFlag;
    char UnitWidth[2];
    Oint8 modeofdisp;
    Oint8 NetTranMode;
    Oint8 PackageMode;
    Oint8 BarcodeFlag;
    int16_t ProgramNumber;
    Oint32 CurrentProgram;
    Oint8 ScreenLockStatus;
    Oint8 ProgramLockStatus;
    Oint8 RunningMode;
    Oint8 RTCStatus;
    int16_t RTCYear;
    Oint8 RTCMonth;
    Oint8 RTCDate;
    Oint8 RTCHour;
    Oint8 RTCMinute;
    Oint8 RTCSecond;
    Oint8 RTCWeek;
    char Temperature1[3];
    char Temperature2[3];
    char Humidity[2];
    char Noise[2];
    Oint8 Reserved;
    Oint8 LogoFlag;
    int16_t PowerOnDelay;
    int16_t WindSpeed;
    int16_t WindDirction;
    int16_t PM2_5;
    int16_t PM10;
    int16_t ExtendParaLen;
    char ControllerName[16];
    char ScreenLocation[44];
    char NameLocalationCRC32[4];
} NetSearchCmdRet_Web;
QM_RECORD_SIZE(NetSearchCmdRet_Web, 595);

/* Brightness of the day in half hours. */
typedef struct Brightness {
    Ouint8 BrightnessMode;    /* 0 manual: the first value, all day; 1 by clock; 2 by sensor */
    Ouint8 HalfHourValue[48]; /* from 0:00-0:30 to 23:30-24:00; raw, 0 to 15 as a rule */
} Brightness;
QM_RECORD_SIZE(Brightness, 49);

/* What a controller is doing. */
typedef struct ControllerStatus_G56 {
    Ouint8 onoffStatus;       /* screen: 0 off, 1 on */
    Ouint8 timingOnOff;       /* 1: a timer switches it (cmd_timingOnOff) */
    Ouint8 brightnessAdjMode; /* BrightnessMode of Brightness */
    Ouint8 brightness;        /* at this moment, raw; 0 to 15 as a rule */
    int16_t programeNumber;   /* number of programs in the controller */
    char currentProgram[4];   /* name of the one that is shown; not terminated */
    Ouint8 screenLockStatus;  /* 1: locked (cmd_screenLock) */
    Ouint8 programLockStatus; /* 1: locked (cmd_programLock) */
    Ouint8 runningMode;       /* raw */
    Ouint8 RTCStatus;         /* of the clock, raw */
    int16_t RTCYear;          /* BCD: 0x2024 */
    Ouint8 RTCMonth;          /* BCD, 0x01 to 0x12 */
    Ouint8 RTCDate;           /* day of the month, BCD, 0x01 to 0x31 */
    Ouint8 RTCHour;           /* BCD, 0x00 to 0x23 */
    Ouint8 RTCMinute;         /* BCD, 0x00 to 0x59 */
    Ouint8 RTCSecond;         /* BCD, 0x00 to 0x59 */
    Ouint8 RTCWeek;           /* 0 Sunday to 6 Saturday */
    Ouint8 temperature1[3];   /* first sensor, raw */
    Ouint8 temperature2[3];   /* second sensor, raw */
    int16_t humidity;         /* raw */
    int16_t noise;            /* raw */
    Ouint8 switchStatus;      /* raw */
    Ouint8 CustomID[12];      /* text of the owner's */
    Ouint8 BarCode[16];       /* text; the controller's */
} ControllerStatus_G56;
QM_RECORD_SIZE(ControllerStatus_G56, 61);

/* When a controller restarts by itself. */
typedef struct TimingReset {
    Ouint8 rstMode;           /* what makes it restart, raw */
    Ouint32 RstInterval;      /* time between two restarts, raw */
    Ouint8 rstHour1, rstMin1; /* first time of the day, raw */
    Ouint8 rstHour2, rstMin2; /* second, likewise */
    Ouint8 rstHour3, rstMin3; /* third, likewise */
} TimingReset;
QM_RECORD_SIZE(TimingReset, 11);

/* The battle time of a controller. The year stays in BCD (2024 arrives as 0x2024), the rest is plain. */
typedef struct BattleTime {
    int16_t BattleRTCYear;  /* BCD */
    Ouint8 BattleRTCMonth;  /* 1 to 12 */
    Ouint8 BattleRTCDate;   /* day of the month, 1 to 31 */
    Ouint8 BattleRTCHour;   /* 0 to 23 */
    Ouint8 BattleRTCMinute; /* 0 to 59 */
    Ouint8 BattleRTCSecond; /* 0 to 59 */
    Ouint8 BattleRTCWeek;   /* 0 Sunday to 6 Saturday */
} BattleTime;
QM_RECORD_SIZE(BattleTime, 8);

/* One file of a controller's file system. */
typedef struct FileAttribute_G56 {
    char fileName[4]; /* not terminated */
    Ouint8 fileType;  /* as given when it was written: 0 program, 9 its data file (generation 6), 1
                         configuration */
    Ouint32 fileLen;  /* bytes */
    Ouint32 fileCRC;  /* the controller's checksum of it */
} FileAttribute_G56;
QM_RECORD_SIZE(FileAttribute_G56, 13);

/* A directory listing. */
typedef struct GetDirBlock_G56 {
    Ouint8 fileType;    /* in: which kind of files to list */
    Ouint16 fileNumber; /* out: entries held */
    Ouint8* dataAddre;  /* out: fileNumber entries of 13 bytes; release with cmd_ofs_freeDirBlock */
} GetDirBlock_G56;
QM_RECORD_SIZE(GetDirBlock_G56, 11);

/* Configuration file of a generation-5 controller. */
typedef struct ConfigFile {
    Ouint8 FileType;           /* first byte of the file, raw; 0 as a rule */
    char ControllerName[8];    /* text */
    Ouint16 Address;           /* screen address: uAddress of Ping_data */
    Ouint8 Baudrate;           /* of the serial line, raw */
    Ouint16 ScreenWidth;       /* pixels */
    Ouint16 ScreenHeight;      /* pixels */
    Ouint8 Color;              /* E_ScreenColor_G56 */
    Ouint8 MirrorMode;         /* mirroring of the picture, raw */
    Ouint8 OEPol;              /* polarity of the output-enable signal, raw */
    Ouint8 DAPol;              /* polarity of the data signal, raw */
    Ouint8 RowOrder;           /* order of the scanned rows, raw */
    Ouint8 FreqPar;            /* frequency parameter of the scan, raw */
    Ouint8 OEWidth;            /* width of the output-enable pulse, raw */
    Ouint8 OEAngle;            /* phase of the output-enable pulse, raw */
    Ouint8 FaultProcessMode;   /* what a fault leads to, raw */
    Ouint8 CommTimeoutValue;   /* time-out of the communication, raw */
    Ouint8 RunningMode;        /* raw */
    Ouint8 LoggingMode;        /* what is logged, raw */
    Ouint8 GrayFlag;           /* whether the screen shows grades, raw */
    Ouint8 CascadeMode;        /* how panels are chained, raw */
    Ouint8 Default_brightness; /* until it is set, raw; 0 to 15 as a rule */
    Ouint8 HUBConfig;          /* wiring of the panel connectors, raw */
    Ouint8 Language;           /* of the controller's own words, raw */
    Ouint8 Backup[3];          /* reserved */
    Ouint16 CRC16;             /* CRC-16/ARC of what is before it; written by cmd_sendConfigFile */
} ConfigFile;
QM_RECORD_SIZE(ConfigFile, 38);

/* Configuration file of a generation-6 controller. */
typedef struct ConfigFile_G6 {
    Ouint8 FileType;           /* as in ConfigFile */
    char ControllerName[16];   /* text */
    char ScreenAddress[48];    /* text: where the screen stands */
    Ouint16 Address;           /* as in ConfigFile, as are the next four */
    Ouint8 Baudrate;           /* raw */
    Ouint16 ScreenWidth;       /* pixels */
    Ouint16 ScreenHeight;      /* pixels */
    Ouint8 Color;              /* E_ScreenColor_G56 */
    Ouint8 modeofdisp;         /* display mode (cmd_setDispMode), raw */
    Ouint8 TipLanguage;        /* of the controller's own words, raw */
    Ouint8 Reserved[5];        /* reserved */
    Ouint8 FaultProcessMode;   /* as in ConfigFile, as are the next three */
    Ouint8 CommTimeoutValue;   /* raw */
    Ouint8 RunningMode;        /* raw */
    Ouint8 LoggingMode;        /* raw */
    Ouint8 DevideScreenMode;   /* how the screen is divided, raw */
    Ouint8 Reserved2;          /* reserved */
    Ouint8 Default_brightness; /* as in ConfigFile */
    Ouint8 Backup[5];          /* reserved */
    Ouint16 CRC16;             /* CRC-16/ARC of what is before it; written by cmd_sendConfigFile_G6 */
} ConfigFile_G6;
QM_RECORD_SIZE(ConfigFile_G6, 94);

/* One spoken text. */
typedef struct HVSound_6G {
    Oint8 SoundFlag;            /* 1: speak; anything else: the rest is not read */
    Oint8 SoundPerson;          /* voice, raw */
    Oint8 SoundVolum;           /* volume, raw */
    Oint8 SoundSpeed;           /* speaking speed, raw */
    Oint8 SoundDataMode;        /* encoding of the text bytes, raw */
    Oint32 SoundReplayTimes;    /* repetitions */
    Oint32 SoundReplayDelay;    /* pause between them, raw */
    Oint8 SoundReservedParaLen; /* bytes of further parameters: 0, since none are sent */
    Oint8 Soundnumdeal;         /* how digits are spoken, raw */
    Oint8 Soundlanguages;       /* language, raw */
    Oint8 Soundwordstyle;       /* word style, raw */
    Ouint32 SoundDataLen;       /* bytes of text, below 65,516 */
    const Ouint8* SoundData;    /* the text, not terminated; the caller's */
} HVSound_6G;
QM_RECORD_SIZE(HVSound_6G, 29);

/* Kind, rectangle and speech of a generation-6 area. */
typedef struct HVareaHeader_G6 {
    Ouint8 AreaType;                             /* E_areaType; not read by the dynamic-area calls */
    Ouint16 AreaX, AreaY, AreaWidth, AreaHeight; /* pixels */
    Ouint8 BackGroundFlag;  /* raw; not read by the dynamic-area calls, as the next two */
    Ouint8 Transparency;    /* raw */
    Ouint8 AreaEqual;       /* raw */
    HVSound_6G stSoundData; /* read by the dynamic-area calls only */
} HVareaHeader_G6;
QM_RECORD_SIZE(HVareaHeader_G6, 41);

/* How the pages of a generation-6 area are shown, and how its text is drawn. */
typedef struct HVpageHeader_G6 {
    Ouint8 PageStyle;          /* raw */
    Ouint8 DisplayMode;        /* entry effect, raw; 4 runs to the left, 38 and 40 to the right */
    Ouint8 ClearMode;          /* how a page is cleared, raw */
    Ouint8 Speed;              /* of the effect, raw */
    Ouint16 StayTime;          /* how long a page stays, raw */
    Ouint8 RepeatTime;         /* how often a page is shown */
    Ouint16 ValidLen;          /* valid width of a page, pixels: the area's; in programs set by the library */
    Ouint8 CartoonFrameRate;   /* of an animation, raw; not sent with dynamic areas */
    Ouint8 BackNotValidFlag;   /* not used, always sent as 0 */
    E_arrMode arrMode;         /* one line or several; any other value counts as several */
    Ouint16 fontSize;          /* points; 12 points are 16 pixels */
    Ouint32 color;             /* palette index or 0xRRGGBB */
    bool fontBold;             /* flag */
    bool fontItalic;           /* flag */
    E_txtDirection tdirection; /* writing direction */
    Ouint16 txtSpace;          /* pixels added between characters */
    Ouint8 Halign;             /* 0 left, 1 centre, 2 right */
    Ouint8 Valign;             /* 0 top, 1 centre, 2 bottom */
} HVpageHeader_G6;
QM_RECORD_SIZE(HVpageHeader_G6, 31);

/* Text settings of generation-5 areas. */
typedef struct HVfontData {
    /* as in HVpageHeader_G6 */
    E_arrMode arrMode;
    Ouint16 fontSize;
    Ouint32 color;
    bool fontBold;
    bool fontItalic;
    E_txtDirection tdirection;
    Ouint16 txtSpace;
    Ouint8 Halign;
    Ouint8 Valign;
} HVfontData;
QM_RECORD_SIZE(HVfontData, 20);

/* How the pages of a generation-5 area are shown, and how its text is drawn. */
typedef struct HVpageHeader {
    /* as in HVpageHeader_G6 */
    Ouint8 PageStyle;
    Ouint8 DisplayMode;
    Ouint8 ClearMode;
    Ouint8 Speed;
    Ouint16 StayTime;
    Ouint8 RepeatTime;

    Ouint16 ValidLen; /* set by the library */

    /* as in HVpageHeader_G6 */
    E_arrMode arrMode;
    Ouint16 fontSize;
    Ouint32 color;
    bool fontBold;
    bool fontItalic;
    E_txtDirection tdirection;
    Ouint16 txtSpace;
    Ouint8 Halign;
    Ouint8 Valign;
} HVpageHeader;
QM_RECORD_SIZE(HVpageHeader, 29);

/* One page, rendered for a preview. */
typedef struct getPageData {
    Ouint16 allPageNub;      /* pages of the area */
    Ouint32 pageLen;         /* bytes at fileAddre */
    const Ouint8* fileAddre; /* a PNG file; the area's, valid until the next preview or change of the area */
} getPageData;
QM_RECORD_SIZE(getPageData, 14);

/* When and how often a generation-5 program is played. */
typedef struct HVprogramHeader {
    Ouint8 FileType;            /* first byte of the file, raw; 0 as a rule */
    Ouint32 ProgramID;          /* 0 to 9999; 7 is file P007, 1234 is file 1234 */
    Ouint8 ProgramStyle;        /* raw; 0 as a rule */
    Ouint8 ProgramPriority;     /* raw; setting the play periods sets it, too */
    Ouint8 ProgramPlayTimes;    /* how often it is played in its turn, raw */
    Ouint16 ProgramTimeSpan;    /* how long it is played in its turn, raw */
    Ouint8 ProgramWeek;         /* days of the week on which it is played, raw; 0xFF: all */
    Ouint16 ProgramLifeSpan_sy; /* first day: year, BCD (0x2024); 0xFFFF in both years: no life span */
    Ouint8 ProgramLifeSpan_sm;  /* month, BCD; 0x12 without a life span, as in the next */
    Ouint8 ProgramLifeSpan_sd;  /* day of the month, BCD */
    Ouint16 ProgramLifeSpan_ey; /* last day, likewise */
    Ouint8 ProgramLifeSpan_em;  /* month */
    Ouint8 ProgramLifeSpan_ed;  /* day */
} HVprogramHeader;
QM_RECORD_SIZE(HVprogramHeader, 19);

/* The same for generation 6. */
typedef struct HVprogramHeader_G6 {
    /* as in HVprogramHeader */
    Ouint8 FileType;
    Ouint32 ProgramID;
    Ouint8 ProgramStyle;
    Ouint8 ProgramPriority;
    Ouint8 ProgramPlayTimes;
    Ouint16 ProgramTimeSpan;

    Ouint8 SpecialFlag;           /* raw; 0 as a rule, as in the next six */
    Ouint8 CommExtendParaLen;     /* bytes of further parameters; none are written */
    Ouint16 ScheduNum;            /* raw */
    Ouint16 LoopValue;            /* raw */
    Ouint8 Intergrate;            /* raw */
    Ouint8 TimeAttributeNum;      /* time attributes; none are written */
    Ouint16 TimeAttribute0Offset; /* where the first of them is, raw */

    /* as in HVprogramHeader */
    Ouint8 ProgramWeek;
    Ouint16 ProgramLifeSpan_sy;
    Ouint8 ProgramLifeSpan_sm;
    Ouint8 ProgramLifeSpan_sd;
    Ouint16 ProgramLifeSpan_ey;
    Ouint8 ProgramLifeSpan_em;
    Ouint8 ProgramLifeSpan_ed;
} HVprogramHeader_G6;
QM_RECORD_SIZE(HVprogramHeader_G6, 29);

/* A time of the day in which a program is played. It may run past midnight. */
typedef struct HVprogrampTime_G56 {
    Ouint8 StartHour, StartMinute, StartSecond; /* plain: 0 to 23, 0 to 59, 0 to 59 */
    Ouint8 EndHour, EndMinute, EndSecond;       /* likewise */
} HVprogrampTime_G56;
QM_RECORD_SIZE(HVprogrampTime_G56, 6);

/* All times of the day in which a program is played. */
typedef struct HVprogramppGrp_G56 {
    Ouint8 playTimeGrpNum;         /* periods used, at most 8; 0 plays at any time */
    HVprogrampTime_G56 timeGrp[8]; /* timeGrp0 to timeGrp7 */
} HVprogramppGrp_G56;
QM_RECORD_SIZE(HVprogramppGrp_G56, 49);

/* Border around the screen. */
typedef struct HVscreenframeHeader {
    Ouint8 FrameDispFlag;  /* 1: there is a border */
    Ouint8 FrameDispStyle; /* how the pattern moves, raw */
    Ouint8 FrameDispSpeed; /* how fast, raw */
    Ouint8 FrameMoveStep;  /* by how many pixels at once */
    Ouint8 FrameWidth;     /* thickness, pixels: the height of the pattern picture */
    Ouint16 FrameBackup;   /* reserved */
} HVscreenframeHeader;
QM_RECORD_SIZE(HVscreenframeHeader, 7);

/* The same for generation 6. */
typedef struct HVscreenframeHeader_G6 {
    Ouint8 FrameDispStype;     /* as FrameDispStyle in HVscreenframeHeader */
    Ouint8 FrameDispSpeed;     /* as in HVscreenframeHeader, as is the next */
    Ouint8 FrameMoveStep;      /* pixels */
    Ouint8 FrameUnitLength;    /* width of the pattern picture, pixels */
    Ouint8 FrameUnitWidth;     /* its height, which is the border's thickness */
    Ouint8 FrameDirectDispBit; /* raw; 0 as a rule */
} HVscreenframeHeader_G6;
QM_RECORD_SIZE(HVscreenframeHeader_G6, 6);

/* Border around an area. */
typedef struct HVareaframeHeader {
    Ouint8 AreaFFlag;      /* not read */
    Ouint8 AreaFDispStyle; /* as in HVscreenframeHeader, as are the next four */
    Ouint8 AreaFDispSpeed; /* raw */
    Ouint8 AreaFMoveStep;  /* pixels */
    Ouint8 AreaFWidth;     /* pixels */
    Ouint16 AreaFBackup;   /* reserved */
} HVareaframeHeader;
QM_RECORD_SIZE(HVareaframeHeader, 7);

/* Kinds of areas. A program takes ePicturesArea and eTimeClockArea, in generation 6 eGlobalBackGroundArea,
 * too. */
QM_ENUM(E_areaType){
    ePicturesArea = 0, eFontArea = 1,       eTimeClockArea = 2,   eTemperatureArea = 3,
    eHumidityArea = 4, eNoiseArea = 5,      eTransparentText = 6, eTransparentBackgroundArea = 7,
    eNeonArea = 8,     eBattleTimeArea = 9, eDynamaticArea = 10,  eGlobalBackGroundArea = 11};

/* Kind and rectangle of a generation-5 area. */
typedef struct HVareaHeader {
    Ouint8 AreaType;                             /* ePicturesArea or eTimeClockArea */
    Ouint16 AreaX, AreaY, AreaWidth, AreaHeight; /* pixels */
} HVareaHeader;
QM_RECORD_SIZE(HVareaHeader, 9);

/* An assembled generation-5 program, ready for cmd_ofsWriteFile. */
typedef struct HVprogram {
    char fileName[4];  /* not terminated */
    Ouint8 fileType;   /* 0 */
    Ouint32 fileLen;   /* bytes */
    Ouint8* fileAddre; /* release with program_freeBuffer */
    Ouint32 fileCRC32; /* the last four bytes of the file */
} HVprogram;
QM_RECORD_SIZE(HVprogram, 21);

/* An assembled generation-6 program: two files, both to be written with cmd_ofsWriteFile. */
typedef struct HVprogram_G6 {
    char fileName[4];   /* of the program file; not terminated */
    Ouint8 fileType;    /* 0 */
    Ouint32 fileLen;    /* bytes */
    Ouint8* fileAddre;  /* release with program_freeBuffer_G6, as dfileAddre */
    char dfileName[4];  /* of the data file; not terminated */
    Ouint8 dfileType;   /* 9 */
    Ouint32 dfileLen;   /* bytes */
    Ouint8* dfileAddre; /* the data file */
} HVprogram_G6;
QM_RECORD_SIZE(HVprogram_G6, 34);

/* Speech of a generation-6 program area. */
typedef struct HVPicAreaSoundHeader_G6 {
    /* as in HVSound_6G */
    Ouint8 SoundPerson;
    Ouint8 SoundVolum;
    Ouint8 SoundSpeed;
    Ouint8 SoundDataMode;
    Ouint32 SoundReplayTimes;
    Ouint32 SoundReplayDelay;
    Ouint8 SoundReservedParaLen;
    Ouint8 Soundnumdeal;
    Ouint8 Soundlanguages;
    Ouint8 Soundwordstyle;
} HVPicAreaSoundHeader_G6;
QM_RECORD_SIZE(HVPicAreaSoundHeader_G6, 16);

/* Formats of the live date, time and day of the week. Dates as YYYY-MM-DD, YYYY/MM/DD, DD-MM-YYYY,
 * DD/MM/YYYY, MM-DD, MM/DD, and in Chinese with the characters for month and day, and year, month and day. */
QM_ENUM(DateStyle){
    YYYY_MM_DD_MINUS = 0,  YYYY_MM_DD_VIRGURE = 1,  DD_MM_YYYY_MINUS = 2,  DD_MM_YYYY_VIRGURE = 3,
    MM_DD_MINUS = 4,       MM_DD_VIRGURE = 5,       MM_DD_CHS = 6,         YYYY_MM_DD_CHS = 7,
    eYYYY_MM_DD_MINUS = 0, eYYYY_MM_DD_VIRGURE = 1, eDD_MM_YYYY_MINUS = 2, eDD_MM_YYYY_VIRGURE = 3,
    eMM_DD_MINUS = 4,      eMM_DD_VIRGURE = 5,      eMM_DD_CHS = 6,        eYYYY_MM_DD_CHS = 7};
/* 23:59:59, the same in Chinese, 23:59, the same in Chinese, "PM 11:59", "11:59 PM". */
QM_ENUM(TimeStyle){HH_MM_SS_COLON = 0, HH_MM_SS_CHS = 1, HH_MM_COLON = 2,
                   HH_MM_CHS = 3,      AM_HH_MM = 4,     HH_MM_AM = 5};
/* Full English name, its first three letters, Chinese name. */
QM_ENUM(WeekStyle){Monday = 1, Mon = 2, Monday_CHS = 3};

/* What a digital time area shows: date, day of the week and time of day, in this order. qm_G5_timedata is
 * another name of it. */
typedef struct HVtimeAreaData_G56 {
    E_arrMode linestyle;  /* on one line, or each on a line of its own */
    Ouint32 color;        /* palette index or 0xRRGGBB */
    const char* fontName; /* font family, or path of a font file (qm_is_font_file) */
    Ouint16 fontSize;     /* points; 12 points are 16 pixels */
    Ouint8 fontBold;      /* 0 or not, as the next two */
    Ouint8 fontItalic;    /* likewise */
    Ouint8 fontUnderline; /* likewise */
    Ouint8 fontAlign;     /* 0 left, 1 centre, 2 right */
    bool date_enable;     /* shows the date */
    DateStyle datestyle;  /* its format */
    bool time_enable;     /* shows the time of day */
    TimeStyle timestyle;  /* its format */
    bool week_enable;     /* shows the day of the week */
    WeekStyle weekstyle;  /* its format */
} HVtimeAreaData_G56;
QM_RECORD_SIZE(HVtimeAreaData_G56, 37);
typedef HVtimeAreaData_G56 qm_G5_timedata;

/* The moment at which a battle time starts. Every field is passed on as it is; controllers expect BCD (2024
 * as 0x2024, 59 as 0x59) and days of the week from 0 for Sunday. */
typedef struct HVTimeAreaBattle_G6 {
    Ouint16 BattleStartYear;  /* BCD */
    Ouint8 BattleStartMonth;  /* BCD, 0x01 to 0x12 */
    Ouint8 BattleStartDate;   /* day of the month, BCD, 0x01 to 0x31 */
    Ouint8 BattleStartHour;   /* BCD, 0x00 to 0x23 */
    Ouint8 BattleStartMinute; /* BCD, 0x00 to 0x59 */
    Ouint8 BattleStartSecond; /* BCD, 0x00 to 0x59 */
    Ouint8 BattleStartWeek;   /* 0 Sunday to 6 Saturday */
    Ouint8 StartUpMode;       /* how it is started, raw */
} HVTimeAreaBattle_G6;
QM_RECORD_SIZE(HVTimeAreaBattle_G6, 9);

/* The hands of an analog clock. A hand of width or length 0 is not shown. */
typedef struct HVAnalogClockHeader_G56 {
    Ouint16 OrignPointX;   /* pivot of the hands inside the area, pixels from its left edge */
    Ouint16 OrignPointY;   /* pixels from its top edge */
    Ouint8 UnitMode;       /* raw */
    Ouint8 HourHandWidth;  /* pixels */
    Ouint8 HourHandLen;    /* pixels from the pivot on */
    Ouint32 HourHandColor; /* palette index or 0xRRGGBB; its low byte, a palette index, is all that generation
                            * 5 and screens that are not full colour take of it */
    Ouint8 MinHandWidth;   /* as of the hour hand, as are the next five */
    Ouint8 MinHandLen;     /* pixels */
    Ouint32 MinHandColor;  /* colour */
    Ouint8 SecHandWidth;   /* pixels */
    Ouint8 SecHandLen;     /* pixels */
    Ouint32 SecHandColor;  /* colour */
} HVAnalogClockHeader_G56;
QM_RECORD_SIZE(HVAnalogClockHeader_G56, 23);

/* Colours of the dial of an analog clock, palette indices or 0xRRGGBB. */
typedef struct ClockColor_G56 {
    Ouint32 Color369; /* hour marks at 12, 3, 6 and 9 */
    Ouint32 ColorDot; /* the other hour marks */
    Ouint32 ColorBG;  /* background */
} ClockColor_G56;
QM_RECORD_SIZE(ClockColor_G56, 12);

/* Hour marks: strokes that point to the pivot, squares, discs. */
QM_ENUM(E_ClockStyle){eLINE = 0, eSQUARE = 1, eCIRCLE = 2};

/* A spoken text without an area, and the number of its entry in the controller's list of voices. */
typedef struct HVSoundDepend_6G {
    Ouint8 VoiceID;     /* number of the entry; not sent with what is inserted */
    HVSound_6G stSound; /* SoundFlag is not read */
} HVSoundDepend_6G;
QM_RECORD_SIZE(HVSoundDepend_6G, 30);

/* One of several dynamic areas of generation 6. */
typedef struct DynamicAreaParams {
    Ouint8 uAreaId;                  /* number of the area */
    HVareaHeader_G6 oAreaHeader_G6;  /* rectangle and speech; the other fields are not read */
    HVpageHeader_G6 stPageHeader;    /* effect and look */
    const Ouint8* fontName;          /* of a text; not read for a picture */
    const Ouint8* strAreaTxtContent; /* the text, or the path of a PNG file */
} DynamicAreaParams;
QM_RECORD_SIZE(DynamicAreaParams, 89);

/* One content item of a dynamic area of generation 5: a text in a font, or a picture. */
typedef struct DynamicAreaBaseInfo_5G {
    Ouint8 nType; /* 1 text, 2 picture; anything else has no pages */

    /* as in HVpageHeader_G6 */
    Ouint8 DisplayMode;
    Ouint8 ClearMode;
    Ouint8 Speed;
    Ouint16 StayTime;
    Ouint8 RepeatTime;

    HVfontData oFont;                /* of a text */
    const Ouint8* fontName;          /* likewise */
    const Ouint8* strAreaTxtContent; /* likewise */
    const Ouint8* filePath;          /* of a picture: a PNG file */
} DynamicAreaBaseInfo_5G;
QM_RECORD_SIZE(DynamicAreaBaseInfo_5G, 51);

/* Of dynamicArea_addDynamicArea, which does not read it. */
typedef struct HVdynamicHeader {
    /* not read */
    Ouint8 RunMode;
    Ouint16 Timeout;
    Ouint8 ImmePlay;
    Ouint8 AreaType;
    Ouint16 AreaX, AreaY, AreaWidth, AreaHeight;
} HVdynamicHeader;
QM_RECORD_SIZE(HVdynamicHeader, 13);

#pragma pack(pop)

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Checksums and link settings ------------------------------------------------------------------- */

/* CRC-16/ARC of data->fileLen bytes at data->fileAddre, into data->fileCRC16. An empty input gives 0.
 * Returns 0; -1 when data is null, or fileAddre is null and fileLen is not 0. Prints nothing. */
QM_API int get_crc16(FileCRC16_G56* data) QM_NOTHROW;

/* CRC-32 (as in zlib and Ethernet) of data->fileLen bytes at data->fileAddre, into data->fileCRC32.
 * Returns and refuses as get_crc16. Prints nothing. */
QM_API int get_crc32(FileCRC32_G56* data) QM_NOTHROW;

/* Sets the number of data bytes in one block of cmd_ofsWriteFile, for the whole process; 1,024 until it is
 * set. Usable are 1 to 32,758. Returns 0 always. Prints nothing. */
QM_API int set_packetLen(Ouint16 len) QM_NOTHROW;

/* ---- Discovery and network setup ------------------------------------------------------------------- */

/*
 * What all of these do: ask one question and copy the answer into the caller's memory, only as far as it was
 * received and as the memory reaches; what was not received stays as it was. That holds for the calls of the
 * following sections, too: a plain acknowledgement in the place of an answer is success and delivers nothing
 * (-1 from cmd_searchController and cmd_ofsReedDirBlock, which cannot do without). A failed call leaves the
 * caller's memory alone, unless said otherwise.
 *
 * cmd_tcp calls ask the controller at ip:port, and print what connecting prints ("TCP connect failed",
 * "TCP connect to select failed" or "TCP connect to select to FD_ISSET failed").
 *
 * cmd_udp calls ask by broadcast on every IPv4 interface of the host but loopback, from local port 5009 to
 * port 5007 of 255.255.255.255. The first controller that answers is taken; an answer is waited for up to
 * three times 1 s. They need a network on which no other program holds local port 5009 for itself.
 *
 * cmd_uart calls are for serial lines, which this library does not drive: they return -1.
 *
 * They return 0; 1 when the answer was longer than could be taken, which prints
 * "return Data Length too long!!! Control Card Return:cmd_header->datalen = %d; but membuff len = %d;" and,
 * in all but cmd_tcpPing and cmd_searchController, delivers what fits; -1 to -5 as listed; a positive value
 * is the controller's refusal. Broadcasts of one process take turns. Two processes that broadcast at once may
 * miss their answers.
 */

/* Looks for a controller by three paths, up to three times each: the Wi-Fi module of a controller (an "AT"
 * probe by broadcast from local port 14769 to port 13769, then TCP port 5005 of whoever answers), the fixed
 * address 192.168.100.1 port 5005, and the broadcast of the cmd_udp calls. retData is zeroed first; on
 * success ipAdder is the address at which the controller was found. Takes about half a minute when there is
 * none, returns the last failure, and prints what connecting prints, for each connection. */
QM_API int cmd_searchController(Ping_data* retData) QM_NOTHROW;
QM_API int cmd_uart_searchController(Ping_data* retData, const char* uartPort) QM_NOTHROW;

/* Asks a controller who it is (52 bytes). What an answer does not hold is zero in cmd_tcpPing's record, and
 * stays as it is in cmd_udpPing's. */
QM_API int cmd_tcpPing(const char* ip, Ouint16 port, Ping_data* retData) QM_NOTHROW;
QM_API int cmd_udpPing(Ping_data* retData) QM_NOTHROW;

/* Asks for the network settings: generation 5, generation 6, and generation 6 with a web server. */
QM_API int cmd_udpNetworkSearch(heartbeatData* retData) QM_NOTHROW;
QM_API int cmd_udpNetworkSearch_6G(NetSearchCmdRet* retData) QM_NOTHROW;
QM_API int cmd_udpNetworkSearch_6G_Web(NetSearchCmdRet_Web* retData) QM_NOTHROW;
QM_API int cmd_tcpNetworkSearch_6G(const char* ip, Ouint16 port, NetSearchCmdRet* retData) QM_NOTHROW;
QM_API int cmd_tcpNetworkSearch_6G_Web(const char* ip, Ouint16 port, NetSearchCmdRet_Web* retData) QM_NOTHROW;
QM_API int cmd_uart_search_Net_6G(NetSearchCmdRet* retData, const char* uartPort,
                                  Ouint8 nBaudRateType) QM_NOTHROW;
QM_API int cmd_uart_search_Net_6G_Web(NetSearchCmdRet_Web* retData, const char* uartPort,
                                      Ouint8 nBaudRateType) QM_NOTHROW;

/* Sets the network of EVERY controller of that generation that the broadcast reaches; the status is that of
 * the first answer. Connect the one that is meant alone. ip, subnetMask, gateway and serverIP are dotted IPv4
 * texts, password has 8 bytes and netID 12. Ports above 32,767 are passed as the same 16 bits, negative.
 * mode, serverMode and heartbeat are passed through as they are. */
QM_API int cmd_udpSetIP(Ouint8 mode, const char* ip, const char* subnetMask, const char* gateway,
                        int16_t port, Ouint8 serverMode, const char* serverIP, int16_t serverPort,
                        const char* password, int16_t heartbeat, const char* netID) QM_NOTHROW;

/* Sets the MAC address, likewise of every controller that the broadcast reaches. mac: six fields separated by
 * "-", each read as a DECIMAL number: "0-26-43-60-77-94" sets 00:1A:2B:3C:4D:5E. */
QM_API int cmd_udpSetMac(const char* mac) QM_NOTHROW;

/* Sets name and password of the Wi-Fi network that a controller's Wi-Fi module opens, and restarts it; of
 * every module that the broadcast of cmd_searchController finds. Returns 0, or -1 when there is no module, it
 * does not accept a setting, or ssid or pwd is too long for a command (65,535 bytes). */
QM_API int cmd_AT_setWifiSsidPwd(const char* ssid, const char* pwd) QM_NOTHROW;

/* Reads them back. The module's answer (at most 511 bytes) is taken apart at its commas; ssid and pwd receive
 * the pieces without a terminating zero, so both must be zeroed, and hold 512 bytes to be safe from any
 * answer. Returns 0, also when the answer holds no comma and nothing is delivered; 2 when the answer has 15
 * to 37 bytes, or fewer with "OK" or "ok" among them; -1 when there is none, it is shorter than 15 bytes
 * otherwise or has 512 bytes or more, after printing "cmd_AT_getWifiSsidPwd return data err"; -1 when there
 * is no module. */
QM_API int cmd_AT_getWifiSsidPwd(char* ssid, char* pwd) QM_NOTHROW;

/* ---- Device control -------------------------------------------------------------------------------- */

/*
 * What all of these do: connect to the controller at ip:port, send one command, wait for its answer. Values
 * are not checked here: a controller refuses what it does not like. They return and print as the calls of
 * the previous section.
 */

/* Restarts the controller. */
QM_API int cmd_sysReset(const char* ip, Ouint16 port) QM_NOTHROW;
/* Sets the controller's clock to this host's local time. */
QM_API int cmd_check_time(const char* ip, Ouint16 port) QM_NOTHROW;
/* Sets it to a time, in plain numbers: a day of the years 1 to 9999, and 0:00:00 to 23:59:59; any other is
 * -1, and nothing is sent. */
QM_API int qm_set_clock(const char* ip, Ouint16 port, Ouint16 year, Ouint8 month, Ouint8 day, Ouint8 hour,
                        Ouint8 minute, Ouint8 second) QM_NOTHROW;
/* Switches the screen: 0 off, 1 on. */
QM_API int cmd_coerceOnOff(const char* ip, Ouint16 port, Ouint8 onOff) QM_NOTHROW;
/* Switches the screen by timer. data: groupNum groups of four bytes, in plain numbers (sent as BCD): hour and
 * minute of switching on, hour and minute of switching off. */
QM_API int cmd_timingOnOff(const char* ip, Ouint16 port, Ouint8 groupNum, const Ouint8* data) QM_NOTHROW;
/* Ends the timer. */
QM_API int cmd_cancelTimingOnOff(const char* ip, Ouint16 port) QM_NOTHROW;
/* Sets the brightness mode and the values of the day's half hours. */
QM_API int cmd_setBrightness(const char* ip, Ouint16 port, const Brightness* brightness) QM_NOTHROW;
/* Reads the controller's ID into 8 bytes; 1 when the controller has a longer one. */
QM_API int cmd_readControllerID(const char* ip, Ouint16 port, Ouint8* ControllerID) QM_NOTHROW;
/* Locks (1) or unlocks (0) the screen; nonvolatile: 1 keeps it over a power failure. */
QM_API int cmd_screenLock(const char* ip, Ouint16 port, Ouint8 nonvolatile, Ouint8 lock) QM_NOTHROW;
/* Locks a program, so that it alone is shown. name: its 4 characters; lockDuration: in the controller's
 * units. The serial form with _6G is the one of generation 6. */
QM_API int cmd_programLock(const char* ip, Ouint16 port, Ouint8 nonvolatile, Ouint8 lock, const char* name,
                           Ouint32 lockDuration) QM_NOTHROW;
QM_API int cmd_uart_programLock(const char* uartPort, Ouint8 baudRate, Ouint8 nonvolatile, Ouint8 lock,
                                const char* name, Ouint32 lockDuration) QM_NOTHROW;
QM_API int cmd_uart_programLock_6G(const char* uartPort, Ouint8 baudRate, Ouint8 nonvolatile, Ouint8 lock,
                                   const char* name, Ouint32 lockDuration) QM_NOTHROW;
/* Reads what the controller is doing (61 bytes). */
QM_API int cmd_check_controllerStatus(const char* ip, Ouint16 port,
                                      ControllerStatus_G56* controllerStatus) QM_NOTHROW;
/* Passwords are 6 bytes. */
QM_API int cmd_setPassword(const char* ip, Ouint16 port, const char* oldPassword,
                           const char* newPassword) QM_NOTHROW;
QM_API int cmd_deletePassword(const char* ip, Ouint16 port, const char* password) QM_NOTHROW;
/* Sets the power-on delay, in the controller's units. */
QM_API int cmd_setDelayTime(const char* ip, Ouint16 port, int16_t delayTime) QM_NOTHROW;
/* What the controller's button does. */
QM_API int cmd_setBtnFunc(const char* ip, Ouint16 port, Ouint8 btnMode) QM_NOTHROW;
/* Sets when the controller restarts by itself. */
QM_API int cmd_setTimingReset(const char* ip, Ouint16 port, const TimingReset* cmdData) QM_NOTHROW;
/* Sets the display mode, by the controller's number for it. */
QM_API int cmd_setDispMode(const char* ip, Ouint16 port, Ouint8 dispMode) QM_NOTHROW;
/* Reads the battle time; it is delivered with status 1, too. */
QM_API int cmd_battieTime(const char* ip, Ouint16 port, Ouint8 mode, BattleTime* battieData) QM_NOTHROW;
/* Starts, stops or reads the stopwatch by mode. A value that the controller answers with is not delivered:
 * the call then returns -1 and prints "nCmdDataLen <= 0 "; only a plain acknowledgement gives 0. */
QM_API int cmd_getStopwatch(const char* ip, Ouint16 port, Ouint8 mode, Ouint32* timeValue) QM_NOTHROW;
/* As cmd_getStopwatch: a value is not delivered. */
QM_API int cmd_getSensorBrightnessValue(const char* ip, Ouint16 port, Ouint32* brightnessValue) QM_NOTHROW;
/* Adjusts the speed of what runs, in the controller's units. */
QM_API int cmd_setSpeedAdjust(const char* ip, Ouint16 port, int16_t speed) QM_NOTHROW;
/* Sets the screen address, which Ping_data names uAddress. */
QM_API int cmd_setScreenAddress(const char* ip, Ouint16 port, int16_t address) QM_NOTHROW;
/* Makes the controller run the firmware in its file of that name (4 characters). */
QM_API int cmd_firmwareActivate(const char* ip, Ouint16 port, const char* firmwareFileName) QM_NOTHROW;
/* Does nothing and returns 0. */
QM_API int update_firmware(const char* ip, Ouint16 port, const char* file) QM_NOTHROW;

/* ---- File system ----------------------------------------------------------------------------------- */

/*
 * A controller keeps files with names of 4 characters, which need not be terminated here. The ofs calls are
 * for program and data files, the conf calls for configuration files. They return and print as the calls
 * of the previous sections; the uart forms return -1.
 */

/* Erases all files. */
QM_API int cmd_ofsFormat(const char* ip, Ouint16 port) QM_NOTHROW;
/* Announces a transfer of several files, and its end. */
QM_API int cmd_ofsStartFileTransf(const char* ip, Ouint16 port) QM_NOTHROW;
QM_API int cmd_ofsEndFileTransf(const char* ip, Ouint16 port) QM_NOTHROW;
/* Deletes fileNub files; fileName: their names, 4 * fileNub bytes. -1 for a negative number and for more
 * names than a frame carries (8,191). The conf form sends the last name one byte short. */
QM_API int cmd_ofsDeleteFormatFile(const char* ip, Ouint16 port, int16_t fileNub,
                                   const char* fileName) QM_NOTHROW;
QM_API int cmd_confDeleteFormatFile(const char* ip, Ouint16 port, int16_t fileNub,
                                    const char* fileName) QM_NOTHROW;
/* Memory of the file system in bytes. */
QM_API int cmd_ofsGetMemoryVolume(const char* ip, Ouint16 port, Ouint32* totalMemVolume,
                                  Ouint32* availableMemVolume) QM_NOTHROW;

/* Writes a file of fileLen bytes at fileAddre in blocks of set_packetLen bytes (the conf form always 1,024),
 * each acknowledged before the next is sent. overwrite: 1 replaces a file of that name. Ends at the first
 * failure with its status; the controller may then hold a part of the file. The ofs form gives -1 and sends
 * nothing when the block size is 0, or above 32,758, which no frame carries. It prints
 * "g_packetLen ======= %d " and, for a failed block, "dataLen-oldLen ======= %d ". */
QM_API int cmd_ofsWriteFile(const char* ip, Ouint16 port, const char* fileName, Ouint8 fileType,
                            Ouint32 fileLen, Ouint8 overwrite, const Ouint8* fileAddre) QM_NOTHROW;
QM_API int cmd_confWriteFile(const char* ip, Ouint16 port, const char* fileName, Ouint8 fileType,
                             Ouint32 fileLen, Ouint8 overwrite, const Ouint8* fileAddre) QM_NOTHROW;

/* Opens a file for reading; the name that the controller answers with replaces fileName. Size and CRC are
 * delivered by the conf form only, but both forms need all pointers. */
QM_API int cmd_ofsStartReedFile(const char* ip, Ouint16 port, char* fileName, Ouint32* fileSize,
                                Ouint32* fileCrc) QM_NOTHROW;
QM_API int cmd_confStartReedFile(const char* ip, Ouint16 port, char* fileName, Ouint32* fileSize,
                                 Ouint32* fileCrc) QM_NOTHROW;
/* Asks for the first block of a file. Data that the controller answers with is not delivered: the call then
 * returns -1 and prints "nCmdDataLen <= 0 ". */
QM_API int cmd_ofsReedFileBlock(const char* ip, Ouint16 port, const char* fileName,
                                Ouint8* fileAddre) QM_NOTHROW;
QM_API int cmd_confReedFileBlock(const char* ip, Ouint16 port, const char* fileName,
                                 Ouint8* fileAddre) QM_NOTHROW;

/* Lists the files of dirBlock->fileType. dataAddre then holds fileNumber entries, which the caller releases
 * with cmd_ofs_freeDirBlock; also when the call fails on the way, with the entries that came until then.
 * Until the controller has announced its listing the record stays as it is: set dataAddre to null before the
 * call, and release an earlier listing first. A controller that sends 64 blocks without entries is -1. */
QM_API int cmd_ofsReedDirBlock(const char* ip, Ouint16 port, GetDirBlock_G56* dirBlock) QM_NOTHROW;
/* The same for count listings, of several kinds of files, on one connection; it ends at the first that fails.
 * Each is released as if it came from cmd_ofsReedDirBlock. */
QM_API int qm_list_files(const char* ip, Ouint16 port, GetDirBlock_G56* listings, Ouint8 count) QM_NOTHROW;
/* Copies entry number (from 0) of a listing; -1 when there is none. */
QM_API int cmd_getFileAttr(const GetDirBlock_G56* dirBlock, Ouint16 number,
                           FileAttribute_G56* fileAttr) QM_NOTHROW;
/* Releases the entries of a listing, and leaves the pointer in the record as it is. Returns 0. */
QM_API int cmd_ofs_freeDirBlock(GetDirBlock_G56* dirBlock) QM_NOTHROW;

/* Reads what the latest transfer was: direction, name (4 bytes), CRC and offset of the file. Once the
 * controller has been reached all four are written, even when the call then fails: what was not received is
 * zero. */
QM_API int cmd_ofsGetTransStatus(const char* ip, Ouint16 port, Ouint8* r_w, char* fileName, Ouint32* fileCrc,
                                 Ouint32* fileOffset) QM_NOTHROW;

/* Writes the configuration file "C000". The CRC-16 of the record is stored in its CRC16 as soon as the
 * controller has been reached, even when writing then fails. */
QM_API int cmd_sendConfigFile(const char* ip, Ouint16 port, ConfigFile* configData) QM_NOTHROW;
QM_API int cmd_sendConfigFile_G6(const char* ip, Ouint16 port, ConfigFile_G6* configData) QM_NOTHROW;

/* Serial forms. */
QM_API int cmd_uart_ofsFormat(const char* uartPort, Ouint8 baudRate) QM_NOTHROW;
QM_API int cmd_uart_ofsStartFileTransf(const char* uartPort, Ouint8 baudRate) QM_NOTHROW;
QM_API int cmd_uart_ofsEndFileTransf(const char* uartPort, Ouint8 baudRate) QM_NOTHROW;
QM_API int cmd_uart_ofsDeleteFormatFile(const char* uartPort, Ouint8 baudRate, int16_t fileNub,
                                        const char* fileName) QM_NOTHROW;
QM_API int cmd_uart_confDeleteFormatFile(const char* uartPort, Ouint8 baudRate, int16_t fileNub,
                                         const char* fileName) QM_NOTHROW;
QM_API int cmd_uart_ofsGetMemoryVolume(const char* uartPort, Ouint8 baudRate, Ouint32* totalMemVolume,
                                       Ouint32* availableMemVolume) QM_NOTHROW;
QM_API int cmd_uart_ofsWriteFile(const char* uartPort, Ouint8 baudRate, const char* fileName, Ouint8 fileType,
                                 Ouint32 fileLen, Ouint8 overwrite, const Ouint8* fileAddre) QM_NOTHROW;
QM_API int cmd_uart_confWriteFile(const char* uartPort, Ouint8 baudRate, const char* fileName,
                                  Ouint8 fileType, Ouint32 fileLen, Ouint8 overwrite,
                                  const Ouint8* fileAddre) QM_NOTHROW;
QM_API int cmd_uart_ofsStartReedFile(const char* uartPort, Ouint8 baudRate, char* fileName, Ouint32* fileSize,
                                     Ouint32* fileCrc) QM_NOTHROW;
QM_API int cmd_uart_confStartReedFile(const char* uartPort, Ouint8 baudRate, char* fileName,
                                      Ouint32* fileSize, Ouint32* fileCrc) QM_NOTHROW;
QM_API int cmd_uart_ofsReedFileBlock(const char* uartPort, Ouint8 baudRate, const char* fileName,
                                     Ouint8* fileAddre) QM_NOTHROW;
QM_API int cmd_uart_confReedFileBlock(const char* uartPort, Ouint8 baudRate, const char* fileName,
                                      Ouint8* fileAddre) QM_NOTHROW;
QM_API int cmd_uart_ofsReedDirBlock(const char* uartPort, Ouint8 baudRate,
                                    GetDirBlock_G56* dirBlock) QM_NOTHROW;
/* Unlike cmd_ofs_freeDirBlock: returns -1 and releases nothing. */
QM_API int cmd_uart_ofsFreeDirBlock(const char* uartPort, Ouint8 baudRate,
                                    GetDirBlock_G56* dirBlock) QM_NOTHROW;
QM_API int cmd_uart_ofsGetTransStatus(const char* uartPort, Ouint8 baudRate, Ouint8* r_w, char* fileName,
                                      Ouint32* fileCrc, Ouint32* fileOffset) QM_NOTHROW;
QM_API int cmd_uart_sendConfigFile(const char* uartPort, Ouint8 baudRate, ConfigFile* configData) QM_NOTHROW;

/* ---- Screen settings ------------------------------------------------------------------------------- */

/* Sets what every later rendering is converted for: the colour type of the screen, the controller type
 * (from Ping_data; it decides the layout of the pixel data) and the wiring of double-colour screens. The
 * settings are shared by the whole process; until they are set, a double-colour screen is assumed. The
 * dynamicArea_ calls set them to the pinged controller's.
 *
 * Returns 0 always. Prints "Error:can't find tranPixelMode,use 0 instead." for a controller type that the
 * library does not know. */
QM_API int program_setScreenParams_G56(E_ScreenColor_G56 color, Ouint16 ControllerType,
                                       E_DoubleColorPixel_G56 doubleColor) QM_NOTHROW;

/* ---- Programs -------------------------------------------------------------------------------------- */

/*
 * A program is one item of a controller's playlist: a header with play rules, play periods, a border, and
 * areas. One program is under construction at a time in a process. The first call of a thread that changes or
 * integrates a program of one generation makes an empty one that the thread owns until it is deleted; the
 * calls of other threads wait for that, without limit. (A call that is refused for a null pointer makes none,
 * and program_setScreenParams_G56, program_deleteProgram, program_freeBuffer and program_pictureArea neither
 * wait nor own.) Make it, fill it, integrate it into its file or files, write those with cmd_ofsWriteFile,
 * release the copies, delete it.
 *
 * Set the screen settings first: borders are converted when they are added, pages when the program is
 * integrated.
 *
 * Calls without a suffix and with _G5 are for generation 5, calls with _G6 for generation 6, calls with
 * _G56 for both. A program of one generation refuses the calls of the other with -1. Calls for both make no
 * program; before there is one they know no area.
 *
 * All return 0, or -1 for a null pointer, an argument that the call refuses, memory that is exhausted, an
 * unknown area, and an area of another kind. The last two print "Error:", the call's name and
 * "==>Can not find the area.please check areaID.", or "==>The area takes no text." (for text on a background
 * or a clock; for other calls picture, border, speech, clock or background).
 *
 * areaID is the caller's number for an area. picPath is the path of a PNG file.
 */

/* A font name, wherever a call takes one, is the path of a font file when it contains ".ttf" or ".ttc" or
 * ends in ".otf", ".otb", ".pcf", ".pcf.gz" or ".bdf", in any case, and else the name of a font family; the
 * fontPath calls are the same as those without. A family that does not exist is replaced by another, and so
 * is a file that cannot be opened, which prints "Error %d opening font.". Characters that the font lacks are
 * taken from another font that has them. qm_is_font_file tells whether a name is a path. The family "auto" is
 * the best that is installed for the size. Bitmaps are never scaled: without those of exactly the size, the
 * next smaller ones are drawn, else the smallest. */
static inline bool qm_has_in_any_case_(const char* name, const char* part, bool atEnd) {
    for (; *name; ++name) {
        size_t i = 0;
        while (part[i] && (name[i] >= 'A' && name[i] <= 'Z' ? name[i] - 'A' + 'a' : name[i]) == part[i]) ++i;
        if (!part[i] && !(atEnd && name[i])) return true;
    }
    return false;
}
static inline bool qm_is_font_file(const char* fontName) {
    return qm_has_in_any_case_(fontName, ".ttf", false) || qm_has_in_any_case_(fontName, ".ttc", false) ||
           qm_has_in_any_case_(fontName, ".otf", true) || qm_has_in_any_case_(fontName, ".otb", true) ||
           qm_has_in_any_case_(fontName, ".pcf", true) || qm_has_in_any_case_(fontName, ".pcf.gz", true) ||
           qm_has_in_any_case_(fontName, ".bdf", true);
}

/* Sets header and file name. -1 when ProgramID is above 9999. In generation 6 the data file has the name of
 * the program file with "D" in the place of its first character. */
QM_API int program_addProgram(const HVprogramHeader* header) QM_NOTHROW;
QM_API int program_addProgram_G6(const HVprogramHeader_G6* header) QM_NOTHROW;
/* Replaces the header. In generation 5 fileName keeps what program_addProgram made it, while the name inside
 * the file is that of the new ProgramID. */
QM_API int program_changeProgramParams(const HVprogramHeader* header) QM_NOTHROW;
QM_API int program_changeProgramParams_G6(const HVprogramHeader_G6* header) QM_NOTHROW;
/* Sets the play periods, and the program's priority to 1; no periods set it to 0. -1 for more than 8. */
QM_API int program_addPlayPeriodGrp(const HVprogramppGrp_G56* periods) QM_NOTHROW;
QM_API int program_addPlayPeriodGrp_G6(const HVprogramppGrp_G56* periods) QM_NOTHROW;

/* Border around the screen, from a pattern picture. Prints "Error:Can't find frame png." when the picture
 * cannot be read: generation 5 has no border then, generation 6 gives -1 and, when a border was to be
 * changed, keeps its picture with the new header. There, adding a second border is -1, too, as is changing
 * one that is not there: "Error:No frame have been added.". */
QM_API int program_addFrame(const HVscreenframeHeader* header, const char* picPath) QM_NOTHROW;
QM_API int program_changeFrame(const HVscreenframeHeader* header, const char* picPath) QM_NOTHROW;
QM_API int program_removeFrame(void) QM_NOTHROW;
QM_API int program_addFrame_G6(const HVscreenframeHeader_G6* header, const char* picPath) QM_NOTHROW;
QM_API int program_changeFrame_G6(const HVscreenframeHeader_G6* header, const char* picPath) QM_NOTHROW;
QM_API int program_removeFrame_G6(void) QM_NOTHROW;

/* Adds an empty area. An area of the same number is replaced, but still counts in the file's area count.
 * -1 for a kind of area that a program does not take (see E_areaType) and for a side above 32,767 pixels. */
QM_API int program_AddArea(Ouint16 areaID, const HVareaHeader* header) QM_NOTHROW;
QM_API int program_addArea_G6(Ouint16 areaID, const HVareaHeader_G6* header) QM_NOTHROW;
/* Deletes an area; 65535 deletes all of them when no area has that number. Returns 0 also when there is no
 * such area. */
QM_API int program_deleteArea(Ouint16 areaID) QM_NOTHROW;
QM_API int program_deleteArea_G6(Ouint16 areaID) QM_NOTHROW;
/* Moves and resizes an area, whose text is laid out anew. -1 for a position outside 0 to 65,535 and for a
 * side outside 0 to 32,767; 29, after printing "Error:Wrong areaID.This area does not exist.", for an unknown
 * area. */
QM_API int program_MoveArea(Ouint16 areaID, Oint32 x, Oint32 y, Oint32 width, Oint32 height) QM_NOTHROW;
QM_API int program_MoveArea_G6(Ouint16 areaID, Oint32 x, Oint32 y, Oint32 width, Oint32 height) QM_NOTHROW;

/* Assembles the file or files of the program and hands out copies. A program can be changed and integrated
 * again. On failure the pointers are null and the lengths 0. Generation 5 also leaves a copy in the file
 * "dataFantx.bin" in the current directory, unless it cannot be written.
 * Prints "Error:The picture does not exist.ID:" and its number for a picture that cannot be read, and leaves
 * its page out. */
QM_API int program_IntegrateProgramFile(HVprogram* program) QM_NOTHROW;
QM_API int program_IntegrateProgramFile_G6(HVprogram_G6* program) QM_NOTHROW;
/* Releases the copies and sets their pointers to null. */
QM_API int program_freeBuffer(HVprogram* program) QM_NOTHROW;
QM_API int program_freeBuffer_G6(HVprogram_G6* program) QM_NOTHROW;
/* Deletes the program and frees the slot for other threads. Returns 0 always. */
QM_API int program_deleteProgram(void) QM_NOTHROW;
QM_API int program_deleteProgram_G6(void) QM_NOTHROW;
/* Writes an empty demonstration program "P000" to a generation-5 controller. It sets the screen settings to
 * double colour of wiring 2 and transfer mode 0, and leaves "dataFantx.bin" as program_IntegrateProgramFile
 * does. The program under construction is not touched. programID is not used. Returns and prints as
 * cmd_ofsWriteFile, but connects before it finds that the block size is unusable. */
QM_API int program_pictureArea(Ouint32 programID, const char* ip, Ouint16 port) QM_NOTHROW;

/* Text and pictures of an area: text pages first, then one page a picture, in the order added. The
 * Change calls keep the font.
 * They print "Error: no arrMode is specified.Use MULTILINE Mode", "Error:no string has been added." for an
 * empty text, which has no pages, and "Error %d opening font."; so do moving an area and changing its border,
 * which lay the text out again. -1 for a text or a picture with which an area has more than 65,535 pages.
 * Fonts above 3,072 points are drawn at 3,072. Fonts and pictures, those of borders and dials too, are read
 * from ordinary files only, not from pipes or devices; pictures above 64 million pixels are not read. The
 * valid width (ValidLen) of a page is the area's, less its border on both sides. Only the page with which a
 * running text ends has the width of the text on it, pictures behind it or not: in mode 4 the last text page;
 * in modes 38 and 40, where text pages are written last page first, the one with the beginning. */
QM_API int program_picturesAreaAddTxt(Ouint16 areaID, const char* str, const char* fontName,
                                      const HVpageHeader* header) QM_NOTHROW;
QM_API int program_fontPath_picturesAreaAddTxt(Ouint16 areaID, const char* str, const char* fontPathName,
                                               const HVpageHeader* header) QM_NOTHROW;
QM_API int program_picturesAreaChangeTxt(Ouint16 areaID, const char* str,
                                         const HVpageHeader* header) QM_NOTHROW;
QM_API int program_fontPath_picturesAreaChangeTxt(Ouint16 areaID, const char* str,
                                                  const HVpageHeader* header) QM_NOTHROW;
QM_API int program_pictureAreaAddPic(Ouint16 areaID, Ouint16 picID, const HVpageHeader* header,
                                     const char* picPath) QM_NOTHROW;
QM_API int program_picturesAreaAddTxt_G6(Ouint16 areaID, const char* str, const char* fontName,
                                         const HVpageHeader_G6* header) QM_NOTHROW;
QM_API int program_fontPath_picturesAreaAddTxt_G6(Ouint16 areaID, const char* str, const char* fontPathName,
                                                  const HVpageHeader_G6* header) QM_NOTHROW;
QM_API int program_picturesAreaChangeTxt_G6(Ouint16 areaID, const char* str,
                                            const HVpageHeader_G6* header) QM_NOTHROW;
QM_API int program_fontPath_picturesAreaChangeTxt_G6(Ouint16 areaID, const char* str,
                                                     const HVpageHeader_G6* header) QM_NOTHROW;
QM_API int program_pictureAreaAddPic_G6(Ouint16 areaID, Ouint16 picID, const HVpageHeader_G6* header,
                                        const char* picPath) QM_NOTHROW;
/* Replaces the picture page of that number; -1, after printing "Error:The picture does not exist.ID:" and the
 * number, when there is none. */
QM_API int program_pictureAreaChangePic_G6(Ouint16 areaID, Ouint16 picID, const HVpageHeader_G6* header,
                                           const char* picPath) QM_NOTHROW;

/* Border around a text and picture area, as thick as its pattern picture is high; text and pictures get
 * what is left. A second border is ignored. Prints "Error:Can't find frame png." when the picture cannot be
 * read; then there is no border. For both generations. */
QM_API int program_picturesAreaAddFrame(Ouint16 areaID, const HVareaframeHeader* header,
                                        const char* picPath) QM_NOTHROW;
QM_API int program_pictureAreaRemoveFrame(Ouint16 areaID) QM_NOTHROW;

/* Renders page pageNum (from 0) of an area of either generation; a clock has one page, as it is at this
 * moment, without hands and without a dial picture that cannot be read (which prints that it is not). -1,
 * with nothing in *page but the number of pages, after printing "Error:pageNum out of range.", "Error:The
 * picture is not exist.", "Error:The last picture is not exist." or "Error:unable to generate pictures.". */
QM_API int program_pictureAreaGetOnePage(Ouint16 areaID, Oint32 pageNum, getPageData* page) QM_NOTHROW;

/* Speech of an area, spoken from the text soundData. -1, after printing "Error:soundData is empty.", for an
 * empty text, which leaves the speech as it was. */
QM_API int program_pictureAreaEnableSound_G6(Ouint16 areaID, HVPicAreaSoundHeader_G6 header,
                                             const char* soundData) QM_NOTHROW;
QM_API int program_pictureAreaChangeSoundSettings_G6(Ouint16 areaID, HVPicAreaSoundHeader_G6 header,
                                                     const char* soundData) QM_NOTHROW;
QM_API int program_pictureAreaDisableSound_G6(Ouint16 areaID) QM_NOTHROW;

/* Background of a generation-6 program, on an area of type eGlobalBackGroundArea: one colour, which hides
 * pictures, or pictures. The colour page's effect is the area's, which is none; header must be there,
 * but is not used. 0xEEFFEEFF is no colour. */
QM_API int program_backGroundColor_G6(Ouint16 areaID, const HVpageHeader_G6* header,
                                      Ouint32 BGColor) QM_NOTHROW;
QM_API int program_backGroundPic_G6(Ouint16 areaID, Ouint16 picID, const HVpageHeader_G6* header,
                                    const char* picPath) QM_NOTHROW;

/* Live clocks, in areas of type eTimeClockArea: the controller shows its own date and time in them. An area
 * is a digital clock until it is made an analog one, which it then stays.
 *
 * Digital: the Change calls keep the font. Date, day of the week and time stand on one line or on one each.
 * What does not fit is drawn smaller, down to 7 pixels, then rearranged into more or fewer lines, then left
 * out as a whole: for the time the day of the week, then the date. One that is alone may be broken behind its
 * separators. When the time still does not fit, hour and minute are shown, or the hour; nothing of a date. A
 * format that does not exist shows nothing. A font file is opened when the program is integrated. */
QM_API int program_timeAreaAddContent(Ouint16 areaID, const HVtimeAreaData_G56* timeData) QM_NOTHROW;
QM_API int program_timeAreaAddContent_G6(Ouint16 areaID, const HVtimeAreaData_G56* timeData) QM_NOTHROW;
QM_API int program_fontPath_timeAreaAddContent(Ouint16 areaID, const HVtimeAreaData_G56* timeData) QM_NOTHROW;
QM_API int program_fontPath_timeAreaAddContent_G6(Ouint16 areaID,
                                                  const HVtimeAreaData_G56* timeData) QM_NOTHROW;
QM_API int program_timeAreaChangeContent(Ouint16 areaID, const HVtimeAreaData_G56* timeData) QM_NOTHROW;
QM_API int program_timeAreaChangeContent_G6(Ouint16 areaID, const HVtimeAreaData_G56* timeData) QM_NOTHROW;

/* Shows, in place of the controller's time, one that runs from a moment on; and its own again. */
QM_API int program_timeAreaSetBattleTime_G6(Ouint16 areaID, const HVTimeAreaBattle_G6* header) QM_NOTHROW;
QM_API int program_timeAreaCancleBattleTime_G6(Ouint16 areaID) QM_NOTHROW;

/* Analog: hands over a dial page of background, hour marks around the pivot, and dial picture. In generation
 * 6 the hands' colours are converted for the screen settings of the moment of the call. */
QM_API int program_timeAreaAddAnalogClock(Ouint16 areaID, const HVAnalogClockHeader_G56* header,
                                          E_ClockStyle cStyle, const ClockColor_G56* cColor) QM_NOTHROW;
QM_API int program_timeAreaChangeAnalogClock(Ouint16 areaID, const HVAnalogClockHeader_G56* header,
                                             E_ClockStyle cStyle, const ClockColor_G56* cColor) QM_NOTHROW;
QM_API int program_timeAreaAddAnalogClock_G6(Ouint16 areaID, const HVAnalogClockHeader_G56* header,
                                             E_ClockStyle cStyle, const ClockColor_G56* cColor) QM_NOTHROW;
QM_API int program_timeAreaChangeAnalogClock_G6(Ouint16 areaID, const HVAnalogClockHeader_G56* header,
                                                E_ClockStyle cStyle, const ClockColor_G56* cColor) QM_NOTHROW;

/* A picture over the hour marks, scaled to the area; it makes the area an analog clock. The file is read when
 * the program is integrated or the clock previewed, which prints "Error:The picture is not exist." when it
 * cannot be, and leaves it out. The third call takes picLen bytes of a PNG file in memory, and copies them;
 * -1 for a picLen of 0 and when the copy cannot be written. Removing it leaves the clock. */
QM_API int program_timeAreaChangeDialPic(Ouint16 areaID, const char* picPath) QM_NOTHROW;
QM_API int program_timeAreaChangeDialPic_G6(Ouint16 areaID, const char* picPath) QM_NOTHROW;
QM_API int program_timeAreaChangeDialPicAdd_G56(Ouint16 areaID, const Ouint8* picAdd,
                                                Ouint32 picLen) QM_NOTHROW;
QM_API int program_timeAreaRemoveDialPic(Ouint16 areaID) QM_NOTHROW;
QM_API int program_timeAreaRemoveDialPic_G6(Ouint16 areaID) QM_NOTHROW;

/* ---- Dynamic areas --------------------------------------------------------------------------------- */

/*
 * A dynamic area is a rectangle of text or picture pages that a running controller shows at once, without
 * a program being written. The controller keeps one area a number; sending a number again replaces it.
 *
 * What all of them do: ping the controller, set the screen settings to its type and to color (double-colour
 * wiring 1), render and convert the pages, connect again and send.
 *
 *   pIP, nPort    address of the controller; ports from 1,024 to 65,535
 *   color         colour type of its screen
 *   uAreaId       number of the area
 *   rectangle     sides of 1 to 32,767 pixels
 *   fontName      a font file or a font family, by the rule of the programs (qm_is_font_file)
 *   text          UTF-8; CR, LF or CR LF ends a line in multi-line mode and is a space in single-line mode.
 *                 An empty text sends an area without pages.
 *
 * The pages of a single line that runs to the right (modes 38 and 40) are sent in the order in which they
 * come in, the one with the end of the text first. All are full: before the beginning of the text they are
 * dark. Pages of several lines are sent in the order of reading.
 *
 * An argument outside its range (a side of 0 or above 32,767, a port above 65,535) is refused with -1 before
 * anything is sent. They return 0 when the controller has acknowledged the area; -1 also for a picture that
 * cannot be read (nothing is sent), a controller that cannot be reached, and also when the controller gives
 * another good answer than a plain acknowledgement; -2 to -5 as listed; a positive value is the
 * controller's refusal (or 1, when the ping's answer was cut). When the second connection fails, the call
 * ends with its status and sends nothing.
 *
 * They print "retdata.ControllerType == 0x%x ", "ret =====cmd_tcpPing===== %d " and
 * "HV_Client init..., Client.m_DeviceType == 0x%x " (with Chinese words in GB2312) on the way;
 * "cmd_tcpPing run error..." when the ping fails; "oClient.m_DeviceType != retdata.ControllerType " when the
 * controller names another type the second time, or none since it cannot be reached; the messages of
 * cmd_tcpPing and program_setScreenParams_G56; "Error: no arrMode is specified.Use MULTILINE Mode"; "Error:no
 * string has been added." for an empty text; "Error %d opening font." for a font file that cannot be opened;
 * "Error:The picture does not exist.ID:" and 0 for a picture that cannot be read; "Send failed...", "Recv
 * failed..." and "Unpack failed..." with byte counts when the exchange fails, and "nCmdDataLen <= 0 " before
 * the last when the answer was a good one, but not a plain acknowledgement.
 */

/* Text that runs through the rectangle from right to left: one line, red, centred while it stands.
 *   nFontSize     points; 12 points are 16 pixels */
QM_API int dynamicArea_AddAreaTxt_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color, Ouint8 uAreaId,
                                     Ouint16 uAreaX, Ouint16 uAreaY, Ouint16 uWidth, Ouint16 uHeight,
                                     const char* fontName, Ouint8 nFontSize,
                                     const char* strAreaTxtContent) QM_NOTHROW;

/* Text with every setting: the rectangle and the speech from oAreaHeader_G6 (its other fields are not
 * read), the effect and the look from stPageHeader. Speech whose text is null, but for a length of 0, or
 * longer than 65,515 bytes is refused with -1 before anything is sent. */
QM_API int dynamicArea_AddAreaTxtDetails_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color,
                                            Ouint8 uAreaId, HVareaHeader_G6* oAreaHeader_G6,
                                            HVpageHeader_G6* stPageHeader, const char* fontName,
                                            const char* strAreaTxtContent) QM_NOTHROW;

/* The picture in the PNG file picPath, drawn at the top left of the rectangle on black and cut to it. The
 * effect comes from pheader, whose text settings are not used. */
QM_API int dynamicArea_AddAreaPic_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color, Ouint8 uAreaId,
                                     Ouint16 AreaX, Ouint16 AreaY, Ouint16 AreaWidth, Ouint16 AreaHeight,
                                     HVpageHeader_G6* pheader, const char* picPath) QM_NOTHROW;

/* The same for an area that is shown together with certain programs only, and does not interrupt what is
 * being played.
 *   RelateProNum     number of programs, 0 to 512; 0: every program
 *   RelateProSerial  their numbers; -1, with nothing but a ping sent, when they are missing */
QM_API int dynamicArea_AddAreaTxtDetails_WithProgram_6G(const char* pIP, Ouint32 nPort,
                                                        E_ScreenColor_G56 color, Ouint8 uAreaId,
                                                        HVareaHeader_G6* oAreaHeader_G6,
                                                        HVpageHeader_G6* stPageHeader, const char* fontName,
                                                        const char* strAreaTxtContent, Ouint16 RelateProNum,
                                                        Ouint16* RelateProSerial) QM_NOTHROW;
QM_API int dynamicArea_AddAreaPic_WithProgram_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color,
                                                 Ouint8 uAreaId, Ouint16 AreaX, Ouint16 AreaY,
                                                 Ouint16 AreaWidth, Ouint16 AreaHeight,
                                                 HVpageHeader_G6* pheader, const char* picPath,
                                                 Ouint16 RelateProNum, Ouint16* RelateProSerial) QM_NOTHROW;

/* Several areas in one command, shown in the order of the records: all texts, or all pictures. The controller
 * takes all of them or none.
 *   uAreaCount  number of records, at least 1
 *   pParams     the records; speech is not read by the WithProgram calls
 * The programs are those of every area; here any number of them. -1, after a message in GB2312 that says
 * which, and with nothing but a ping sent, when two areas have the same number. */
QM_API int dynamicAreaS_AddTxtDetails_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color,
                                         Ouint8 uAreaCount, DynamicAreaParams* pParams) QM_NOTHROW;
QM_API int dynamicAreaS_AddTxtDetails_WithProgram_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color,
                                                     Ouint8 uAreaCount, DynamicAreaParams* pParams,
                                                     Ouint16 RelateProNum,
                                                     Ouint16* RelateProSerial) QM_NOTHROW;
QM_API int dynamicAreaS_AddAreaPic_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color,
                                      Ouint8 uAreaCount, DynamicAreaParams* pParams) QM_NOTHROW;
QM_API int dynamicAreaS_AddAreaPic_WithProgram_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color,
                                                  Ouint8 uAreaCount, DynamicAreaParams* pParams,
                                                  Ouint16 RelateProNum, Ouint16* RelateProSerial) QM_NOTHROW;

/* Generation 5: one area of text, of a picture, or of several items one after the other. What they do, print
 * and return is as above, with these differences: ports from 0 to 65,535; no speech; and -1, with nothing but
 * a ping sent, when the payload is longer than 65,535 bytes, or program numbers are promised but missing.
 *   RunMode, Timeout  what the controller does when the pages have been shown, and when nothing new comes
 *   RelateAllPro      1: shown with every program; 0: with the RelateProNum programs in RelateProSerial
 *   ImmePlay          1: shown at once; 0: it does not interrupt what is being played
 *   oFrame            not sent: dynamic areas have no border
 *   DisplayMode ...   how the pages are shown; the last page of a text is as wide as the text on it. In mode
 *                     38 dynamicArea_AddAreaWithTxt_5G sends the pages of any text as a program holds them,
 *                     last page first
 *   filePath          a PNG file
 *   pInfo             nInfoCount pointers, at least 1 */
QM_API int dynamicArea_AddAreaWithTxt_5G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color,
                                         Ouint8 uAreaId, Ouint8 RunMode, Ouint16 Timeout, Ouint8 RelateAllPro,
                                         Ouint16 RelateProNum, Ouint16* RelateProSerial, Ouint8 ImmePlay,
                                         Ouint16 uAreaX, Ouint16 uAreaY, Ouint16 uWidth, Ouint16 uHeight,
                                         HVareaframeHeader oFrame, Ouint8 DisplayMode, Ouint8 ClearMode,
                                         Ouint8 Speed, Ouint16 StayTime, Ouint8 RepeatTime, HVfontData oFont,
                                         const char* fontName, const char* strAreaTxtContent) QM_NOTHROW;
QM_API int dynamicArea_AddAreaWithPic_5G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color,
                                         Ouint8 uAreaId, Ouint8 RunMode, Ouint16 Timeout, Ouint8 RelateAllPro,
                                         Ouint16 RelateProNum, Ouint16* RelateProSerial, Ouint8 ImmePlay,
                                         Ouint16 uAreaX, Ouint16 uAreaY, Ouint16 uWidth, Ouint16 uHeight,
                                         HVareaframeHeader oFrame, Ouint8 DisplayMode, Ouint8 ClearMode,
                                         Ouint8 Speed, Ouint16 StayTime, Ouint8 RepeatTime,
                                         const char* filePath) QM_NOTHROW;
QM_API int dynamicArea_AddAreaInfos_5G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color,
                                       Ouint8 uAreaId, Ouint8 RunMode, Ouint16 Timeout, Ouint8 RelateAllPro,
                                       Ouint16 RelateProNum, Ouint16* RelateProSerial, Ouint8 ImmePlay,
                                       Ouint16 uAreaX, Ouint16 uAreaY, Ouint16 uWidth, Ouint16 uHeight,
                                       HVareaframeHeader oFrame, Ouint8 nInfoCount,
                                       DynamicAreaBaseInfo_5G** pInfo) QM_NOTHROW;

/* Delete one area, or several. They ping the controller first, and print as above, but
 * "ret failed!!!!!!!!! =====cmd_tcpPing===== %d " when the ping fails. Ports are those of the generation.
 *   uAreaId     0 to 64; -1 (255) deletes all areas. Other values above 127 are sent as they are; 65 to 127
 *               are -1, and nothing is sent.
 *   uAreaCount  number of ids; -1 deletes all areas, and no ids are read. Other negative numbers are sent as
 *               they are, without ids.
 *   pAreaID     the ids, of any value; null only in generation 5, and only where none is read */
QM_API int dynamicArea_DelArea_6G(const char* pIP, Ouint32 nPort, Oint8 uAreaId) QM_NOTHROW;
QM_API int dynamicArea_DelAreas_6G(const char* pIP, Ouint32 nPort, Oint8 uAreaCount,
                                   Oint8* pAreaID) QM_NOTHROW;
QM_API int dynamicArea_DelArea_5G(const char* pIP, Ouint32 nPort, Ouint8 uAreaId) QM_NOTHROW;
QM_API int dynamicArea_DelAreaS_5G(const char* pIP, Ouint32 nPort, Oint8 uAreaCount,
                                   Oint8* pAreaID) QM_NOTHROW;

/* Speech without an area, on generation 6: inserts a text, or replaces entries of the controller's list of
 * voices. They do not ping. StoreFlag, VoiceFlg and the fields of the records are the speech unit's; VoiceID
 * is sent with updates only, and a count above 255 is announced by its low byte, with all records. -1,
 * before anything is sent, for a text that is null, but for a length of 0, or longer than 65,515 bytes, for
 * an empty one that is to be inserted, and for a port that the calls of generation 6 refuse. */
QM_API int dynamicArea_InsertSoundIndepend(const char* pIP, Ouint32 nPort, HVSoundDepend_6G stSoundData,
                                           Ouint8 VoiceFlg, Ouint8 StoreFlag) QM_NOTHROW;
QM_API int dynamicArea_UpdateSoundIndepend(const char* pIP, Ouint32 nPort, HVSoundDepend_6G* stSoundData,
                                           Ouint16 nSoundDataCount, Ouint8 StoreFlag) QM_NOTHROW;

/* Kept for older callers: they do nothing, read nothing and return 0. */
QM_API int dynamicArea_addDynamicArea(Ouint16 areaID, HVdynamicHeader* header) QM_NOTHROW;
QM_API int dynamicArea_deleteDynamicArea(Ouint16 areaID) QM_NOTHROW;
QM_API int dynamicArea_addTxt(Ouint16 areaID) QM_NOTHROW;
QM_API int dynamicArea_fontPath_addTxt(Ouint16 areaID) QM_NOTHROW;
QM_API int dynamicArea_changeTxt(Ouint16 areaID) QM_NOTHROW;
QM_API int dynamicArea_fontPath_changeTxt(Ouint16 areaID) QM_NOTHROW;
QM_API int dynamicArea_addPic(Ouint16 areaID) QM_NOTHROW;
QM_API int dynamicArea_changePic(Ouint16 areaID) QM_NOTHROW;
QM_API int dynamicArea_addFrame(Ouint16 areaID) QM_NOTHROW;
QM_API int dynamicArea_changeFrame(Ouint16 areaID) QM_NOTHROW;
QM_API int dynamicArea_removeFrame(Ouint16 areaID) QM_NOTHROW;
QM_API int dynamicArea_integrateDAreaFile(void) QM_NOTHROW;

/* From now on the calling thread's calls that send or delete areas take their controller to be of this type,
 * as a ping told it, rather than ping it themselves: a connection less for each. 0: they ping, as they do
 * until then. Returns what was said last. A wrong type makes wrong pixels. */
QM_API Ouint16 qm_assume_controller_type(Ouint16 controllerType) QM_NOTHROW;

/* ---- Measuring texts ------------------------------------------------------------------------------- */

/* What a text takes on pages of width x height pixels, and what it is drawn in, without drawing it. It waits
 * for other threads that draw.
 *   text    UTF-8, as the calls that add texts take it
 *   style   read before this returns
 *   extent  the caller's, written when this returns 0
 * Ink that reaches beyond the page is counted, so that a text fits when it makes one page and its ink is no
 * larger than that. Returns 0, or -1 when something is null. A font file that cannot be opened prints
 * "Error %d opening font."; family and file are then those of the font in its place. */
QM_API int qm_measure_text(const char* text, const qm_text_style* style, Ouint16 width, Ouint16 height,
                           qm_text_extent* extent) QM_NOTHROW;

/* ---- Reasons, messages, types and version ---------------------------------------------------------- */

/* Why the calling thread's last call did not return 0: one English sentence with the facts, such as
 * "Connecting to 192.168.0.199:5005 was refused." or "Argument nPort is 80, and may be 1024 to 65535.", which
 * names the argument, or the field of a record, as this header does. Empty, never null, when the call
 * returned 0, and before the first. The words are for people, and may change; programs go by the status.
 * A cut answer's bytes are counted as they came in, before they were unstuffed. The names of files stand in
 * it as the caller gave them, of a long one the end. The text is the library's, and stays until the thread's
 * next call or its end. The calls of this section leave it alone. */
QM_API const char* qm_last_error(void) QM_NOTHROW;

/* Hands every message that is otherwise printed on standard output to handler, one a call, byte for byte,
 * with its line end where it has one; for the whole process. Null restores standard output.
 *   message  the handler's to read until it returns
 *   context  handed on as it is
 * The handler is called by the thread whose call prints, in the middle of that call, and by several threads
 * at once when several print. It must return normally (no longjmp, no exception), and may call nothing of the
 * library but this section; whatever else it calls does nothing and returns -1. It must not wait for another
 * thread that calls the library. When this returns, the handler before may still be running in other threads:
 * its context must live until the calls that had begun by then have ended. A handler stays when the library
 * is closed with dlclose, so one that goes away must be taken back before. */
QM_API void qm_set_message_handler(void (*handler)(const char* message, void* context),
                                   void* context) QM_NOTHROW;

/* What a controller type tells; nobody is asked. type is the caller's: written whole, zeros for a type that
 * is not known, or null. Returns the generation: 5, 6, or 0 when it is of neither. Prints nothing. */
QM_API int qm_controller_type(Ouint16 controllerType, QM_ControllerType* type) QM_NOTHROW;

/* Version of the library at hand, such as "1.0.0". */
QM_API const char* qm_version(void) QM_NOTHROW;

#ifdef __cplusplus
}
#endif

#endif /* QM_SDK_DUAL_H */
