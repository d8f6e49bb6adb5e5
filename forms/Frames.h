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

private:
    void BitBtn3Click();
    void BitBtn4Click();
    void FrameStatusChange();
    bool CheckValidate();
    void SetBtnEnablen();
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

/// Runs a wizard. @return true when it was finished: then all steps are saved.
bool Show_Frames(const std::string& title, const std::vector<TFrameDetFormClass>& formClasses,
                 TCvsObject& cvs);

}  // namespace tandrel
