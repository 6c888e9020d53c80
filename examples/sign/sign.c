/* A small sign: a headline, a clock that is updated every second, and a logo. At the end the clock goes, and
 * the headline says goodbye.
 *
 *     cc sign.c $(pkg-config --cflags --libs qm_sdkDual) -o sign
 *     ./sign 127.0.0.1 5005 logo.png 10
 */
#define _POSIX_C_SOURCE 200809L
#include <qm_sdk_dual.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

enum { HEADLINE = 1, CLOCK = 2, LOGO = 3 };

static const char* ip = "127.0.0.1";
static Ouint32 port = 5005;
static E_ScreenColor_G56 color;

/* One line of text that stands in its rectangle. */
static int show(Ouint8 id, Ouint16 x, Ouint16 y, Ouint16 width, Ouint16 height, Ouint32 text_color,
                const char* text) {
    HVareaHeader_G6 area;
    HVpageHeader_G6 page;
    memset(&area, 0, sizeof area);
    memset(&page, 0, sizeof page);
    area.AreaX = x;
    area.AreaY = y;
    area.AreaWidth = width;
    area.AreaHeight = height;
    page.DisplayMode = 1; /* stands still */
    page.StayTime = 300;
    page.RepeatTime = 1;
    page.ValidLen = width;
    page.arrMode = SINGLELINE;
    page.fontSize = 9;
    page.color = text_color;
    page.Halign = 1;
    page.Valign = 1;
    return dynamicArea_AddAreaTxtDetails_6G(ip, port, color, id, &area, &page, "DejaVu Sans", text);
}

static int show_logo(Ouint16 x, const char* path) {
    HVpageHeader_G6 page;
    memset(&page, 0, sizeof page);
    page.DisplayMode = 1;
    page.RepeatTime = 1;
    page.ValidLen = 16;
    return dynamicArea_AddAreaPic_6G(ip, port, color, LOGO, x, 0, 16, 16, &page, path);
}

static int run_clock(Ouint16 width, int seconds) {
    int status = QM_OK;
    for (int i = 0; i < seconds && status == QM_OK; ++i) {
        const struct timespec second = {1, 0};
        char text[16];
        time_t now;
        if (i > 0) nanosleep(&second, NULL);
        now = time(NULL);
        strftime(text, sizeof text, "%H:%M:%S", localtime(&now));
        status = show(CLOCK, 0, 16, width, 16, eGreen, text);
    }
    return status;
}

int main(int argc, char** argv) {
    const char* logo = argc > 3 ? argv[3] : "logo.png";
    const int seconds = argc > 4 ? atoi(argv[4]) : 10;
    Ping_data screen;
    Ouint16 width = 0;
    int status;

    memset(&screen, 0, sizeof screen);
    if (argc > 1) ip = argv[1];
    if (argc > 2) port = (Ouint32)strtoul(argv[2], NULL, 10);
    status = cmd_tcpPing(ip, (Ouint16)port, &screen);
    color = screen.Color;
    width = screen.ScreenWidth;
    if (status == QM_OK && (width < 48 || screen.ScreenHeight < 32)) {
        fprintf(stderr, "the sign needs a screen of 48 x 32 pixels or more\n");
        return 1;
    }
    if (status == QM_OK) status = show(HEADLINE, 0, 0, (Ouint16)(width - 16), 16, eRed, "Open");
    if (status == QM_OK) status = show_logo((Ouint16)(width - 16), logo);
    if (status == QM_OK) status = run_clock(width, seconds);
    if (status == QM_OK) status = dynamicArea_DelArea_6G(ip, port, CLOCK);
    if (status == QM_OK) status = show(HEADLINE, 0, 0, (Ouint16)(width - 16), 16, eRed, "Closed");
    printf("status %d%s%s\n", status, status == QM_OK ? "" : ": ", qm_last_error());
    return status == QM_OK ? 0 : 2;
}
