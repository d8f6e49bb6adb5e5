// How the reading of the client's log grows.

#include <cstdio>
#include <string>
#include <string_view>

#include "bench/Table.h"
#include "cvs/LogParser.h"
#include "framework/base/exceptions.h"

namespace bench {
namespace {

constexpr int Turns = 15;
constexpr int Many = 100000;
constexpr int NamesPerFile = 100;
constexpr double Second = 1000;

std::string FileHeader(int number) {
    return "\r\nRCS file: /repository/mod/file" + std::to_string(number) +
           ".c,v\r\nhead: 1.9\r\nbranch:\r\nlocks: strict\r\naccess list:\r\nsymbolic names:\r\n";
}

/// The log of files with so many different names.
std::string LogOfNames(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        if (i % NamesPerFile == 0)
            text += FileHeader(i / NamesPerFile);
        text += "\tRELEASE_" + std::to_string(i) + ": 1." + std::to_string(i % 9 + 1) + "\r\n";
        if (i % NamesPerFile == NamesPerFile - 1)
            text += "keyword substitution: kv\r\ntotal revisions: 9;\tselected revisions: 0\r\n";
    }
    return text;
}

/// The log of one file with so many revisions, no two of the same second.
std::string LogOfDates(int count) {
    std::string text = FileHeader(0) + "keyword substitution: kv\r\ntotal revisions: 9\r\n";
    for (int i = 0; i < count; ++i) {
        char date[32];
        std::snprintf(date, sizeof date, "2004/11/%02d %02d:%02d:%02d", i / 86400 + 1,
                      i / 3600 % 24, i / 60 % 60, i % 60);
        text += "----------------------------\r\nrevision 1." + std::to_string(i + 1) +
                "\r\ndate: " + date +
                ";  author: somebody;  state: Exp;  lines: +1 -1\r\nchanged\r\n";
    }
    return text;
}

void MeasureParser(TTable& table, const std::string& name, std::string (*makeText)(int count),
                   bool (*parse)(std::string_view text, tandrel::TLogList& list)) {
    const auto reading = [&](int count) {
        return [text = makeText(count), count, parse] {
            tandrel::TLogList list;
            if (!parse(text, list) || list.Count() != count)
                throw framework::Exception("a log was not read completely");
        };
    };
    const auto [whole, half] = MedianTurn(Turns, reading(Many), reading(Many / 2));
    table.Add(name, whole, "the same, 50,000", half, 2.3);
    table.Add(name, whole, "one second", Second, 1);
}

}  // namespace

void MeasureLog(TTable& table) {
    MeasureParser(table, "ParseSymbolicNames, 100,000 names", LogOfNames,
                  tandrel::ParseSymbolicNames);
    MeasureParser(table, "ParseRevisionDates, 100,000 dates", LogOfDates,
                  tandrel::ParseRevisionDates);
}

}  // namespace bench
