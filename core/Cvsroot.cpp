#include "core/Cvsroot.h"

#include "core/Cvs_utils.h"
#include "framework/base/format.h"
#include "framework/base/text.h"

namespace tandrel {

using framework::Format;

namespace {

constexpr std::string_view DefaultPort = "2401";

std::string UserPart(std::string_view User, std::string_view Password) {
    std::string Result(User);
    if (!Password.empty()) {
        Result += ':';
        Result += Password;
    }
    if (!Result.empty())
        Result += '@';
    return Result;
}

}  // namespace

std::string CompileCVSROOT(TConnectionType ConnType, std::string_view Server, std::string_view User,
                           std::string_view Password, std::string_view Port,
                           std::string_view Path) {
    switch (ConnType) {
        case cnPServer: {
            const std::string Account = UserPart(User, Password);
            if (!Port.empty() && Port != DefaultPort)
                return Format(":pserver:%s%s:%s:%s  ", {Account, Server, Port, Path});
            return Format(":pserver:%s%s:%s  ", {Account, Server, Path});
        }
        case cnSSH:
            return Format(":ext:%s%s:%s  ", {UserPart(User, ""), Server, Path});
        case cnLocal:
            break;
    }
    return Format("%s ", {Path});
}

std::string StrFromConnType(TConnectionType ConnType) {
    switch (ConnType) {
        case cnPServer:
            return "pserver";
        case cnSSH:
            return "ext";
        case cnLocal:
            break;
    }
    return "Local";
}

TConnectionType ConnTypeFromStr(std::string_view S) {
    for (const TConnectionType ConnType : {cnLocal, cnPServer, cnSSH})
        if (framework::SameText(S, StrFromConnType(ConnType)))
            return ConnType;
    return cnLocal;
}

TKeywordMode Get_KeywordMode(std::string_view S) {
    for (int Mode = Km_kkv; Mode <= Km_kv; ++Mode)
        if (RemoveBeforeString(TKeywModeNames[static_cast<std::size_t>(Mode)], "-") == S)
            return static_cast<TKeywordMode>(Mode);
    return Km_none;
}

}  // namespace tandrel
