/*
 * qm_sdk_dual.h - the C interface of libqm_sdkDual: drive LED display controllers of generations 5 and 6.
 *
 * Conventions that hold for every call:
 *
 *  1. Every call returns an int status, 0 for success; the codes stand in QM_STATUS_MAP below. A positive
 *     status other than 1 is the error value with which the controller refused (NACK). A null pointer where
 *     a pointer is needed gives -1; nothing is sent and nothing is changed.
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
 *  6. Diagnostics are printed on standard output; what a call prints is said with it.
 *  7. A colour is a palette index (0 black, 1 red, 2 green, 3 yellow, 4 blue, 5 magenta, 6 cyan, 7 white)
 *     when below 8, and 0xRRGGBB otherwise.
 */
#ifndef QM_SDK_DUAL_H
#define QM_SDK_DUAL_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

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
    X(QM_FAILED, -1, "no connection, no whole answer in time, or a rejected argument")                       \
    X(QM_BAD_HEADER, -2, "the header checksum of the answer is wrong")                                       \
    X(QM_BAD_CRC, -3, "the CRC of the answer is wrong, or its lengths claim more than it holds")             \
    X(QM_BAD_VERSION, -4, "the answer speaks an unknown version of the link protocol")                       \
    X(QM_WRONG_ANSWER, -5, "the answer belongs to another command")

#define QM_STATUS_ENUMERATOR(name, value, meaning) name = value,
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

/* Text on one line that is cut into pages, or wrapped into lines. */
QM_ENUM(E_arrMode){SINGLELINE = 0, MULTILINE = 1};

/* Writing direction: lines from left to right, or characters stacked into columns from left to right. */
QM_ENUM(E_txtDirection){eHorizontal = 0, eVertical = 1};

/* ---- Records --------------------------------------------------------------------------------------- */

#pragma pack(push, 1)

/* Bytes to check (the caller's) and their CRC-16/ARC, written by get_crc16. */
typedef struct FileCRC16_G56 {
    const Ouint8* fileAddre;
    Ouint32 fileLen;
    Ouint16 fileCRC16;
} FileCRC16_G56;
QM_RECORD_SIZE(FileCRC16_G56, 14);

/* Bytes to check (the caller's) and their CRC-32, written by get_crc32. */
typedef struct FileCRC32_G56 {
    const Ouint8* fileAddre;
    Ouint32 fileLen;
    Ouint32 fileCRC32;
} FileCRC32_G56;
QM_RECORD_SIZE(FileCRC32_G56, 16);

/* What a controller says of itself when it is pinged. */
typedef struct Ping_data {
    Ouint16 ControllerType; /* low byte: VEMAR_CARD_TYPE, high byte: variant */
    Ouint8 FirmwareVersion[8];
    Ouint8 ScreenParaStatus;
    Ouint16 uAddress; /* screen address */
    Ouint8 Baudrate;
    Ouint16 ScreenWidth;  /* pixels */
    Ouint16 ScreenHeight; /* pixels */
    Ouint8 Color;
    Ouint8 CurrentBrigtness;
    Ouint8 CurrentOnOffStatus;
    Ouint16 ScanConfNumber;
    Ouint8 reversed[9];
    Ouint8 ipAdder[20]; /* dotted address at which the controller was found (searches only), NUL-terminated */
} Ping_data;
QM_RECORD_SIZE(Ping_data, 52);

/* One spoken text. */
typedef struct HVSound_6G {
    Oint8 SoundFlag;     /* 1: speak; anything else: the rest is not read */
    Oint8 SoundPerson;   /* voice */
    Oint8 SoundVolum;    /* volume */
    Oint8 SoundSpeed;    /* speaking speed */
    Oint8 SoundDataMode; /* encoding of the text bytes */
    Oint32 SoundReplayTimes;
    Oint32 SoundReplayDelay;
    Oint8 SoundReservedParaLen;
    Oint8 Soundnumdeal;      /* how digits are spoken */
    Oint8 Soundlanguages;    /* language */
    Oint8 Soundwordstyle;    /* word style */
    Ouint32 SoundDataLen;    /* bytes of text, below 65,516 */
    const Ouint8* SoundData; /* the text, not terminated; the caller's */
} HVSound_6G;
QM_RECORD_SIZE(HVSound_6G, 29);

/* Kind, rectangle and speech of a generation-6 area. */
typedef struct HVareaHeader_G6 {
    Ouint8 AreaType;
    Ouint16 AreaX, AreaY, AreaWidth, AreaHeight; /* pixels */
    Ouint8 BackGroundFlag;
    Ouint8 Transparency;
    Ouint8 AreaEqual;
    HVSound_6G stSoundData; /* read by the dynamic-area calls only */
} HVareaHeader_G6;
QM_RECORD_SIZE(HVareaHeader_G6, 41);

/* How the pages of a generation-6 area are shown, and how its text is drawn. */
typedef struct HVpageHeader_G6 {
    Ouint8 PageStyle;
    Ouint8 DisplayMode; /* entry effect; 4 runs to the left, 38 and 40 to the right */
    Ouint8 ClearMode;
    Ouint8 Speed;
    Ouint16 StayTime;
    Ouint8 RepeatTime;
    Ouint16 ValidLen; /* valid width of a page, pixels */
    Ouint8 CartoonFrameRate;
    Ouint8 BackNotValidFlag; /* not used, always sent as 0 */
    E_arrMode arrMode;
    Ouint16 fontSize; /* points; 12 points are 16 pixels */
    Ouint32 color;    /* palette index or 0xRRGGBB */
    bool fontBold;
    bool fontItalic;
    E_txtDirection tdirection;
    Ouint16 txtSpace; /* pixels added between characters */
    Ouint8 Halign;    /* 0 left, 1 centre, 2 right */
    Ouint8 Valign;    /* 0 top, 1 centre, 2 bottom */
} HVpageHeader_G6;
QM_RECORD_SIZE(HVpageHeader_G6, 31);

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

/* Sets the number of data bytes in one block of a file written to a controller, for the whole process;
 * 1,024 until it is set. Returns 0. Prints nothing. */
QM_API int set_packetLen(Ouint16 len) QM_NOTHROW;

/* ---- Discovery ------------------------------------------------------------------------------------- */

/* Asks the controller at ip:port who it is, over TCP, and fills *retData (52 bytes). retData is written on
 * success only, and only as far as the controller's answer reached.
 *
 * Returns 0; -1 when there is no connection or no answer, or an argument is null; -2 to -5 as listed; a
 * positive value is the controller's refusal.
 * Prints "TCP connect failed", "TCP connect to select failed" or "TCP connect to select to FD_ISSET failed"
 * when the connection cannot be made. */
QM_API int cmd_tcpPing(const char* ip, Ouint16 port, Ping_data* retData) QM_NOTHROW;

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

/* ---- Dynamic areas, generation 6 ------------------------------------------------------------------- */

/*
 * A dynamic area is a rectangle of text or picture pages that a running controller shows at once, without
 * a program being written. The controller keeps one area a number; sending a number again replaces it.
 *
 * What all of them do: ping the controller, set the screen settings to its type and to color (double-colour
 * wiring 1), render and convert the pages, connect again and send.
 *
 *   pIP, nPort    address of the controller; ports below 1024 are refused
 *   color         colour type of its screen
 *   uAreaId       number of the area
 *   fontName      a font file when it contains ".ttf" or ".ttc" in any case, else the name of a font family;
 *                 a font that does not exist is replaced by another. Characters that the font lacks are taken
 *                 from another font that has them.
 *   text          UTF-8; CR, LF or CR LF ends a line in multi-line mode and is a space in single-line mode.
 *                 An empty text sends an area without pages.
 *
 * They return 0 when the controller has acknowledged the area; -1 for a rejected argument, a picture that
 * cannot be read (nothing is sent), a controller that cannot be reached, and also when the controller gives
 * another good answer than a plain acknowledgement; -2 to -5 as listed; a positive value is the
 * controller's refusal.
 *
 * They print "retdata.ControllerType == 0x%x ", "ret =====cmd_tcpPing===== %d " and
 * "HV_Client init..., Client.m_DeviceType == 0x%x " (with Chinese words in GB2312) on the way;
 * "cmd_tcpPing run error..." when the ping fails; "oClient.m_DeviceType != retdata.ControllerType " when the
 * controller names another type the second time; the messages of cmd_tcpPing and
 * program_setScreenParams_G56; "Error:no string has been added." for an empty text; "Error %d opening font."
 * for a font file that cannot be opened; "Error:The picture does not exist.ID:" and 0 for a picture that
 * cannot be read; "Send failed...", "Recv failed..." and "Unpack failed..." with byte counts when the
 * exchange fails.
 */

/* Text that runs through the rectangle from right to left: one line, red, centred while it stands.
 *   nFontSize     points; 12 points are 16 pixels */
QM_API int dynamicArea_AddAreaTxt_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color, Ouint8 uAreaId,
                                     Ouint16 uAreaX, Ouint16 uAreaY, Ouint16 uWidth, Ouint16 uHeight,
                                     const char* fontName, Ouint8 nFontSize,
                                     const char* strAreaTxtContent) QM_NOTHROW;

/* Text with every setting: the rectangle and the speech from oAreaHeader_G6 (its other fields are not
 * read), the effect and the look from stPageHeader. Speech whose text is null or longer than 65,515 bytes
 * is refused with -1. */
QM_API int dynamicArea_AddAreaTxtDetails_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color,
                                            Ouint8 uAreaId, HVareaHeader_G6* oAreaHeader_G6,
                                            HVpageHeader_G6* stPageHeader, const char* fontName,
                                            const char* strAreaTxtContent) QM_NOTHROW;

/* The picture in the PNG file picPath, drawn at the top left of the rectangle on black and cut to it. The
 * effect comes from pheader, whose text settings are not used. */
QM_API int dynamicArea_AddAreaPic_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color, Ouint8 uAreaId,
                                     Ouint16 AreaX, Ouint16 AreaY, Ouint16 AreaWidth, Ouint16 AreaHeight,
                                     HVpageHeader_G6* pheader, const char* picPath) QM_NOTHROW;

#ifdef __cplusplus
}
#endif

#endif /* QM_SDK_DUAL_H */
