#pragma once

#include <functional>
#include <string>
#include <vector>

#include "forms/FrameDetForm.h"
#include "framework/ui/application.h"

namespace tandrel {

/// Makes a form of one class, which the application owns.
using TFrameDetFormClass = std::function<TFrameDetForm&()>;

template <class T>
TFrameDetForm& NewForm() {
    return framework::Application().CreateForm<T>();
}

/// A wizard: steps of which one shows at a time.
class TFrame_Frm : public framework::TForm {
public:
    explicit TFrame_Frm(const std::string& title);
    ~TFrame_Frm() override;

    /// Makes a step, loads it and appends it; the dialog grows to its size.
    void AddFrame(const TFrameDetFormClass& formClass, TCvsObject& cvs);
    /// Shows the first step. Call it when all are there.
    void ShowFirst();
    /// Saves every step, from the first to the last.
    void SaveFrameFalues();

    /// "< Back": shows the step before, if there is one.
    void BitBtn3Click(framework::TObject* Sender = nullptr);
    /// "Next >": tells the step that is being left and shows the next one, if there is one.
    void BitBtn4Click(framework::TObject* Sender = nullptr);
    /// What a step's OnStatusChange calls. @param Ok is not looked at: the step shown counts.
    void FrameStatusChange(TFrameDetForm& Sender, bool Ok);
    /// Whether the input of the step shown is complete; false without a step.
    bool CheckValidate();
    /// Brings the buttons and the caption up to date.
    void SetBtnEnablen();

private:
    void GoTo(std::size_t index);
    bool IsLast() const { return Index_ + 1 >= Frames_.size(); }

    std::string Title_;
    std::size_t Index_ = 0;
    std::vector<TFrameDetForm*> Frames_;  // the application's; freed with the frame
    framework::TPanel* Panel3_;
    framework::TButton* BitBtn1_;
    framework::TButton* BitBtn3_;
    framework::TButton* BitBtn4_;
};

/// Runs a wizard. @return true when it was finished: then all steps are saved. While one is open
/// another one is refused, with a message of the object.
bool Show_Frames(const std::string& title, const std::vector<TFrameDetFormClass>& formClasses,
                 TCvsObject& cvs);

}  // namespace tandrel
