#include "host/PasswordMask.h"

namespace host {

std::string MaskPasswords(std::string text) {
    constexpr const char* Methods[] = {":pserver:", ":ext:"};
    for (const std::string method : Methods)
        for (std::size_t at = text.find(method); at != std::string::npos;
             at = text.find(method, at + 1)) {
            const std::size_t user = at + method.size();
            // A password may hold an "@"; a server's name and what follows it cannot.
            const std::size_t end = text.find_first_of(" \t\r\n\"/\\;", user);
            const std::size_t server = text.rfind('@', end);
            const std::size_t password = text.find(':', user);
            if (server == std::string::npos || password == std::string::npos || server < user ||
                password > server)
                continue;
            text.replace(password + 1, server - password - 1, "***");
        }
    return text;
}

}  // namespace host
