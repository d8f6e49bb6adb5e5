/* The first program that ./test and its like start: keeps Wine's desktop alive, and says "ready"
 * when it is there.
 *
 * Whichever program first opens a window starts the desktop, which inherits its standard error.
 * CTest reads that to its end: a test that had to start the desktop would seem to run as long as
 * that does.  Without a user the desktop ends after a second, so there has to be one all the time.
 * It needs no window of its own: asking for the desktop is enough.
 */
#include <stdio.h>
#include <windows.h>

int main(void)
{
    GetDesktopWindow();
    puts("ready");
    fflush(stdout);
    Sleep(INFINITE);
    return 0;
}
