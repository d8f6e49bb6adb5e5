#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "tests/hosting/TestHost.h"
#include "workbench/Viewers.h"

namespace tests {

/// A project with a window's wishes kept instead of fulfilled.
class TTestViews : public workbench::TViewHost {
public:
    TTestViews(hosting::TSettings& settings, const std::string& folder)
        : Settings_(settings), Project(Window, settings, folder) {
        Window.Say(true);
    }
    bool Query(const std::function<void(hosting::TQueries& queries)>& action) override {
        hosting::TQueries queries(Project, Settings_);
        action(queries);
        return true;
    }
    bool Operate(const std::vector<std::string>& paths,
                 const std::function<bool(tandrel::TCvsObject&)>& operation) override {
        return Project.Operate(operation, paths);
    }
    std::vector<hosting::TFileRow> Files(const std::vector<std::string>&) override { return {}; }
    void Commit(const std::vector<std::string>& paths) override {
        Wishes += "commit" + Names(paths) + "\n";
    }
    std::string Folder() const override { return Project.Folder(); }
    void Compare(const std::vector<std::string>& paths, const hosting::TVersion& from,
                 const hosting::TVersion& to) override {
        Wishes += "compare" + Names(paths) + ": " + from.Text() + " and " + to.Text() + "\n";
        Query([&](hosting::TQueries& queries) {
            const auto text = queries.Comparison(paths, from, to, false);
            Difference = text ? text->Text : "(none)";
        });
    }
    void ShowHistory(const std::vector<std::string>& paths) override {
        Wishes += "history" + Names(paths) + "\n";
    }
    void Annotate(const std::string& file, const std::string& revision) override {
        Wishes += "annotate" + Names({file}) + " " + revision + "\n";
    }
    void OpenText(const std::string& caption, const std::string& text,
                  const std::string& folder) override {
        Wishes += "text " + caption + " in" + Names({folder}) + "\n" + text;
    }
    void OpenFile(const std::string& path) override { Wishes += "open" + Names({path}) + "\n"; }
    hosting::TSettings& Settings() override { return Settings_; }

    /// What was wished for since the last time.
    std::string Wished() { return std::exchange(Wishes, {}); }

private:
    std::string Names(const std::vector<std::string>& paths) const {
        std::string names;
        for (const std::string& path : paths)
            names += " " + path.substr(std::min(path.size(), Project.Folder().size() + 1));
        return names;
    }

    hosting::TSettings& Settings_;
    std::string Wishes;

public:
    TTestHost Window;
    hosting::TProject Project;
    std::string Difference;  ///< Of what was compared last.
};

}  // namespace tests
