// A client that does what a real one will not do on demand. The first argument says what.

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

void Write(const std::string& bytes, DWORD standardHandle = STD_OUTPUT_HANDLE) {
    DWORD written = 0;
    ::WriteFile(::GetStdHandle(standardHandle), bytes.data(), static_cast<DWORD>(bytes.size()),
                &written, nullptr);
}

/// Writes numbered lines of 64 bytes, in blocks of 4 KB. A count of zero is for ever.
void Flood(long long lines, DWORD standardHandle = STD_OUTPUT_HANDLE) {
    const char filling = standardHandle == STD_OUTPUT_HANDLE ? '.' : '!';
    std::string block;
    for (long long line = 0; lines == 0 || line < lines; ++line) {
        char text[65];
        std::snprintf(text, sizeof text, "%016lld", line);
        std::memset(text + 16, filling, 46);
        text[62] = '\r';
        text[63] = '\n';
        block.append(text, 64);
        if (block.size() == 4096) {
            Write(block, standardHandle);
            block.clear();
        }
    }
    Write(block, standardHandle);
}

DWORD WINAPI FloodErrors(void* lines) {
    Flood(*static_cast<const int*>(lines), STD_ERROR_HANDLE);
    return 0;
}

/// Both streams at once, each from a thread of its own.
void FloodBoth(int lines) {
    const HANDLE errors = ::CreateThread(nullptr, 0, FloodErrors, &lines, 0, nullptr);
    Flood(lines);
    ::WaitForSingleObject(errors, INFINITE);
    ::CloseHandle(errors);
}

/// Leaves the name and the content of a file in another one, which appears when it is complete.
int Show(const std::string& file, const std::string& where) {
    std::FILE* const in = std::fopen(file.c_str(), "rb");
    std::FILE* const out = std::fopen((where + ".new").c_str(), "wb");
    if (!in || !out)
        return 96;
    std::fprintf(out, "%s\n", file.c_str());
    for (int byte; (byte = std::fgetc(in)) != EOF;)
        std::fputc(byte, out);
    std::fclose(in);
    std::fclose(out);
    return ::MoveFileA((where + ".new").c_str(), where.c_str()) ? 0 : 95;
}

/// Reads until `end` has been read `count` times; returns all bytes.
std::string ReadInput(char end, int count) {
    std::string input;
    char ch = 0;
    for (DWORD read = 0; count > 0 &&
                         ::ReadFile(::GetStdHandle(STD_INPUT_HANDLE), &ch, 1, &read, nullptr) &&
                         read;) {
        input += ch;
        if (ch == end)
            --count;
    }
    return input;
}

void CloseOutput(bool keepErrors) {
    // A console would keep a handle of the output for itself.
    ::FreeConsole();
    ::CloseHandle(::GetStdHandle(STD_OUTPUT_HANDLE));
    if (!keepErrors)
        ::CloseHandle(::GetStdHandle(STD_ERROR_HANDLE));
}

void StartGrandchild(const char* milliseconds) {
    char program[MAX_PATH];
    ::GetModuleFileNameA(nullptr, program, sizeof program);
    std::string commandLine = "\"" + std::string(program) + "\" sleep " + milliseconds;
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION information{};
    if (!::CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                          &startup, &information))
        std::exit(99);
    ::CloseHandle(information.hThread);
    ::CloseHandle(information.hProcess);
}

}  // namespace

int main(int count, char** arguments) {
    const std::vector<std::string> words(arguments + 1, arguments + count);
    const std::string mode = words.empty() ? "" : words[0];
    const auto number = [&](std::size_t index) {
        return index < words.size() ? std::atoi(words[index].c_str()) : 0;
    };
    if (mode == "exit")
        return number(1);
    if (mode == "crash")
        ::RaiseException(STATUS_ACCESS_VIOLATION, 0, 0, nullptr);
    if (mode == "flood") {
        Flood(number(1));
    } else if (mode == "sleep") {
        ::Sleep(static_cast<DWORD>(number(1)));
    } else if (mode == "say-and-sleep") {
        // Once, or as often as said.
        for (int i = words.size() > 3 ? number(3) : 1; i > 0; --i) {
            Write(words[1]);
            ::Sleep(static_cast<DWORD>(number(2)));
        }
    } else if (mode == "close-output-and-stay") {
        // With "errors" it keeps the other stream, and so does a grandchild that may follow.
        CloseOutput(words.size() > 1);
        if (words.size() > 2)
            StartGrandchild(words[2].c_str());
        ::Sleep(60000);
    } else if (mode == "close-output-and-complain") {
        CloseOutput(true);
        for (int i = number(1); i > 0; --i) {
            ::Sleep(static_cast<DWORD>(number(2)));
            Write("late ", STD_ERROR_HANDLE);
        }
    } else if (mode == "close-output-and-read") {
        // Its end is that of the input; with "errors" it keeps the other stream.
        CloseOutput(words.size() > 1);
        return static_cast<int>(ReadInput('\0', 1).size()) + 5;
    } else if (mode == "flood-both") {
        FloodBoth(number(1));
    } else if (mode == "say-both") {
        Write(words[1]);
        Write(words[2], STD_ERROR_HANDLE);
        return number(3);
    } else if (mode == "all-bytes") {
        std::string bytes;
        for (int byte = 0; byte < 256; ++byte)
            bytes += static_cast<char>(byte);
        Write(bytes);
    } else if (mode == "say-file") {
        std::FILE* const in = std::fopen(words[1].c_str(), "rb");
        if (!in)
            return 96;
        for (int byte; (byte = std::fgetc(in)) != EOF;)
            Write(std::string(1, static_cast<char>(byte)));
        std::fclose(in);
    } else if (mode == "show") {
        return Show(words[2], words[1]);
    } else if (mode == "grandchild") {
        StartGrandchild(words[1].c_str());
        return number(2);
    } else if (mode == "with-grandchild") {
        // Both stay, and both hold the output.
        StartGrandchild(words[1].c_str());
        ::Sleep(static_cast<DWORD>(number(1)));
    } else if (mode == "zeros") {
        Write(std::string("before\0behind\r\n", 15));
    } else if (mode == "ask") {
        Write("Are you sure? ");
        const std::string input = ReadInput('\r', number(1));
        Write("answer:" + input.substr(0, input.find('\0')) + ";" + std::to_string(input.size()));
    } else if (mode == "never-read") {
        // Each write is one chunk for the reader, as long as it keeps up; together they are more
        // than a pipe holds.
        for (int i = number(1); i > 0; --i) {
            Write(std::string(1000, '.') + "\r\n");
            ::Sleep(2);
        }
    } else if (mode == "arguments") {
        for (std::size_t i = 1; i < words.size(); ++i)
            Write("[" + words[i] + "]\r\n");
    } else if (mode == "half-check-out") {
        // Breaks off, after a while, in the middle of the first file.
        ::CreateDirectoryA(words[1].c_str(), nullptr);
        std::FILE* const file = std::fopen((words[1] + "\\" + words[2]).c_str(), "wb");
        if (!file)
            return 97;
        std::fputs("the first half of ", file);
        std::fclose(file);
        Write("U " + words[1] + "/" + words[2] + "\r\n");
        ::Sleep(static_cast<DWORD>(number(3)));
        return 1;
    } else if (mode == "surroundings") {
        char folder[MAX_PATH], value[1024];
        ::GetCurrentDirectoryA(sizeof folder, folder);
        std::string text = "folder:" + std::string(folder) + ";";
        for (std::size_t i = 1; i < words.size(); ++i) {
            const DWORD length = ::GetEnvironmentVariableA(words[i].c_str(), value, sizeof value);
            text += words[i] + "=" + std::string(value, length) + ";";
        }
        Write(text);
    } else {
        Write("fake client: what is " + mode + "?\r\n");
        return 98;
    }
    return 0;
}
