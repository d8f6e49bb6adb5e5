/* Keeps Wine's desktop alive for a session.
 *
 * The first program that opens a window starts the desktop, which ends a second after the last such
 * program and holds the standard error of its starter open until then.  CTest reads that to its
 * end, so every window test would take a second longer.  This program needs no window of its own:
 * asking for the desktop makes it one of the desktop's users.
 */
#include <windows.h>

int main(void)
{
    GetDesktopWindow();
    Sleep(INFINITE);
    return 0;
}
