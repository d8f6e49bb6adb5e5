#include "workbench/LogNames.h"

#include <algorithm>
#include <map>

#include "workbench/RevisionNumbers.h"

namespace workbench {

namespace {

TRevisionNumber NumberOf(const std::string& text) {
    return ParseNumber(text).value_or(TRevisionNumber());
}

}  // namespace

std::vector<std::string> BranchesOf(const TFileLog& log) {
    std::map<TRevisionNumber, const std::string*> names;
    for (const TFileLabel& label : log.Labels)
        if (label.IsBranch())
            names.emplace(PlainBranch(NumberOf(label.Revision)), &label.Name);
    std::vector<std::string> branches;
    branches.reserve(log.Revisions.size());
    for (const TRevision& revision : log.Revisions) {
        const TRevisionNumber branch = BranchOf(NumberOf(revision.Number));
        const auto name = names.find(branch);
        branches.push_back(name != names.end() ? *name->second : TextOf(branch));
    }
    return branches;
}

std::vector<std::vector<std::size_t>> LabelsOfRevisions(const TFileLog& log) {
    std::map<TRevisionNumber, std::size_t> revisions, newest;
    for (std::size_t i = 0; i < log.Revisions.size(); ++i) {
        const TRevisionNumber number = NumberOf(log.Revisions[i].Number);
        revisions.emplace(number, i);
        const auto [at, isFirst] = newest.emplace(BranchOf(number), i);
        if (!isFirst && NumberOf(log.Revisions[at->second].Number) < number)
            at->second = i;
    }
    std::vector<std::vector<std::size_t>> labels(log.Revisions.size());
    for (std::size_t i = 0; i < log.Labels.size(); ++i) {
        TRevisionNumber number = NumberOf(log.Labels[i].Revision);
        if (IsBranchNumber(number)) {
            number = PlainBranch(std::move(number));
            if (const auto tip = newest.find(number); tip != newest.end()) {
                labels[tip->second].push_back(i);
                continue;
            }
            number = RootOf(number);
        }
        if (const auto revision = revisions.find(number); revision != revisions.end())
            labels[revision->second].push_back(i);
    }
    return labels;
}

std::string FirstOf(const std::vector<std::string>& texts, std::size_t most) {
    std::string list;
    for (std::size_t i = 0; i < std::min(texts.size(), most); ++i)
        list += (i > 0 ? ", " : "") + texts[i];
    return texts.size() > most ? list + " and " + std::to_string(texts.size() - most) + " more"
                               : list;
}

std::string FirstLineOf(const std::string& message) {
    const std::size_t start = message.find_first_not_of('\n');
    return start == std::string::npos ? std::string()
                                      : message.substr(start, message.find('\n', start) - start);
}

}  // namespace workbench
