// Groups and codes of the controllers' commands. An answer carries its request's code + 0x80, or stands in
// the global group.
#pragma once

#include "qm_sdk_dual.h"

namespace qm {

enum cmd_group_56 : Ouint8 {
    hv_GRP_Global = 0xA0, // answers only: ACK and NACK
    hv_GRP_OFSConf = 0xA1,
    hv_GRP_CONF = 0xA2,
    hv_GRP_Display = 0xA3,
    hv_GRP_Network = 0xA4,
    hv_GPR_5HDynamicArea = 0xA7,
    hv_GRP_ScanConf = 0xB0,
};

enum global_cmd_hv : Ouint8 { hv_ACK = 0, hv_NACK = 1 };

// File system. The "other" codes address the configuration files.
enum ofs_cmd : Ouint8 {
    hv_ofs_Format = 0,
    hv_ofs_FileDelete = 1,
    hv_ofs_StartWriteFile = 2,
    hv_ofs_WriteFileBlock = 3,
    hv_ofs_StartReadFile = 4,
    hv_ofs_ReadFileBlock = 5,
    hv_ofs_StartReadDir = 6,
    hv_ofs_ReadDirBlock = 7,
    hv_ofs_StartFileTransf = 8,
    hv_ofs_EndFileTransf = 9,
    hv_ofs_other_FileDelete = 10,
    hv_ofs_other_StartWriteFile = 11,
    hv_ofs_other_WriteFileBlock = 12,
    hv_ofs_other_StartReadFile = 13,
    hv_ofs_other_ReadFileBlock = 14,
    hv_ofs_GetMemoryVolume = 18,
    hv_ofs_GetTransStatus = 19,
};

// Configuration and control.
enum conf_cmd : Ouint8 {
    hv_conf_Ping = 0,
    hv_conf_SystemReset = 1,
    hv_conf_SytemClockCorrect = 2,
    hv_conf_FirmwareActivate = 3,
    hv_conf_CheckCurrentFirmware = 4,
    hv_conf_SwitchOnOffScreen = 5,
    hv_conf_ScreenTimingOnOff = 6,
    hv_conf_ModifyBrightness = 7,
    hv_conf_CancelScreenTimingOnOff = 8,
    hv_conf_EraseExFlash = 9,
    hv_conf_ReadControllerID = 10,
    hv_conf_ReadCopyrightInfo = 11,
    hv_conf_SetDispOptimizationOption = 12,
    hv_conf_ScreenLock = 13,
    hv_conf_ProgramLock = 14,
    hv_conf_CheckControllerStatus_G56 = 15,
    hv_conf_SetPassword = 16,
    hv_conf_deletePassword = 17,
    hv_conf_SetDelayTime = 18,
    hv_conf_SetBtnFunc = 19,
    hv_conf_SetRstFunc = 20,
    hv_conf_SetDispMode = 21,
    hv_conf_CheckFPGAStatus = 22,
    hv_conf_GetBattleTime = 23,
    hv_conf_GetStopwatch = 24,
    hv_conf_GetBrightnessValue = 25,
    hv_conf_SpeedAdjust = 26,
    hv_conf_ScreenAddress = 27,
};

enum network_cmd : Ouint8 {
    hv_net_SetEthernetMac = 0,
    hv_net_SetEthernetIP = 1,
    hv_net_NetworkSearch = 2,
    hv_net_NetworkSearch_6G = 3,
};

} // namespace qm
