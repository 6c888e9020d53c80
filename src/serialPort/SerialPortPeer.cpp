#include "serialPort/SerialPortPeer.h"

#include "support/reason.h"

namespace qm {

int SerialPortPeer::InitSerialPort(const char* portName, Ouint8 baudRate) {
    SetTimeout(3);
    if (const int code = Open(portName); code != QM_OK) return code;
    return SetCom(baudRate);
}

int SerialPortPeer::Open(const char*) { return QM_OK; }
int SerialPortPeer::SetCom(Ouint8) { return QM_OK; }
int SerialPortPeer::Send(const Ouint8*, int) { return QM_OK; }
int SerialPortPeer::Recv(Ouint8*, int&, int) { return not_implemented(); }
int SerialPortPeer::not_implemented() { return fail(QM_FAILED, "Serial lines are not implemented."); }

int HV_serialPort::init(const char* portName, Ouint8 baudRate) {
    if (InitSerialPort(portName, baudRate) != QM_OK) return QM_FAILED;
    return ping_handshake(kTimeout);
}

} // namespace qm
