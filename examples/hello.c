/* Asks a controller who it is and lets a text run over its screen.
 *
 *     cc hello.c $(pkg-config --cflags --libs qm_sdkDual) -o hello
 *     ./hello 127.0.0.1 5005 "Hello, world"
 */
#include <qm_sdk_dual.h>
#include <stdio.h>
#include <stdlib.h>

int main(int argc, char** argv) {
    const char* ip = argc > 1 ? argv[1] : "127.0.0.1";
    const long port = argc > 2 ? strtol(argv[2], NULL, 10) : 5005;
    const char* text = argc > 3 ? argv[3] : "Hello";
    Ping_data screen = {0};
    int status;

    if (port < 1024 || port > 65535) {
        fprintf(stderr, "usage: hello [IP [PORT [TEXT]]], with a port from 1024 to 65535\n");
        return 1;
    }
    status = cmd_tcpPing(ip, (Ouint16)port, &screen);
    if (status == QM_OK) {
        printf("A screen of %d x %d pixels.\n", screen.ScreenWidth, screen.ScreenHeight);
        status = dynamicArea_AddAreaTxt_6G(ip, (Ouint32)port, screen.Color, 0, 0, 0, screen.ScreenWidth,
                                           screen.ScreenHeight, "DejaVu Sans", 18, text);
    }
    printf("Status %d%s%s\n", status, status == QM_OK ? "" : ": ", qm_last_error());
    return status == QM_OK ? 0 : 2;
}
