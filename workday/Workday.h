#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cvs/Cvstempl.h"
#include "support/Files.h"

namespace workday {

/// Plays a day's work on a sample project through the engine and the real client, tells every
/// message as it arrives, and checks each step with a client of its own.
class TWorkday {
public:
    TWorkday();
    /// Plays all steps; true when every one did what it should.
    bool Play();

private:
    struct TStep {
        std::string Title;
        bool Done;
    };

    /// Plays one step and writes its command, exit code and outcome. A step that raises has failed.
    void Step(const std::string& title, const std::function<void()>& play);
    /// Fails the step when the condition does not hold.
    void Expect(bool condition, const std::string& what);
    /// The last command is to have ended with this exit code.
    void ExpectExit(const tandrel::TCvsObject& cvs, int code);
    /// What a bare client says about the repository.
    std::string AskClient(const std::string& arguments);

    void CreateRepository();
    void ImportProject();
    void CheckOut(tandrel::TCvsObject& who);
    void ChangeFile();
    void AddFiles();
    void ShowStatus();
    void ShowDiff();
    void Commit();
    void Tag();
    void ShowLog();
    void UpdateSecondCopy();
    void RemoveFile();
    void PlaceOldProject();
    void ShowModel();
    void ShowNames();
    void PullByExport();
    void TakeOldProjectOut();
    bool Summary() const;

    void Connect(tandrel::TCvsObject& cvs, const std::string& folder);

    support::TTempFolder Folder_{"workday", "C:"};
    tandrel::TCvsObject Alice_;
    tandrel::TCvsObject Bob_;
    tandrel::TCvsObject Placer_;
    std::string Messages_;  // of the present step
    std::string Failure_;   // of the present step
    std::vector<TStep> Steps_;
};

}  // namespace workday
