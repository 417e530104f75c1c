// Holds a file as a GIS does that shows it, until its input ends: hold.exe FILE
#include <stdio.h>
#include <windows.h>

int main(int count, char** arguments) {
    const HANDLE file = count == 2
                            ? CreateFileA(arguments[1], GENERIC_READ, FILE_SHARE_READ, NULL, OPEN_EXISTING, 0, NULL)
                            : INVALID_HANDLE_VALUE;
    if (file == INVALID_HANDLE_VALUE) return 1;
    puts("held");
    fflush(stdout);
    while (getchar() != EOF) {
    }
    return 0;
}
