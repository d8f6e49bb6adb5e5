#pragma once

#include <string>

#include "cvs/Cvstempl_types.h"
#include "framework/base/datetime.h"

namespace tandrel {

class TCvsObject;

/// The dialogs that operations open. They are declared here, where operations can see them, and
/// defined by the forms, which see the operations' object. Main thread only.
///
/// Those that edit an object's options answer true when the user accepted them. Without that the
/// object stays as it was, but for what a wizard's step hands over when the user goes on from it:
/// the connection, and the password.

bool Init_Prepare(TCvsObject& CvsObject);
bool Commit_Prepare(TCvsObject& CvsObject);
bool Update_Prepare(TCvsObject& CvsObject);
bool PlaceProject_Prepare(TCvsObject& CvsObject);
bool PullProject_Prepare(TCvsObject& CvsObject);
bool Login_Prepare(TCvsObject& CvsObject);
bool Logout_Prepare(TCvsObject& CvsObject);

bool sh_CrLabel_Form(TCvsObject& CvsObject);
bool sh_DelLabel_Form(TCvsObject& CvsObject);
bool sh_CrBranch_Form(TCvsObject& CvsObject);
bool sh_DelBranch_Form(TCvsObject& CvsObject);

bool sh_Release_Form(TCvsObject& CvsObject);
bool sh_Diff_Form(TCvsObject& CvsObject);
/// The connection and the other settings of a project.
bool CVSProperty_Frm(TCvsObject& CvsObject);

/// Shows the working copy; returns when the user has closed the browser. The result tells nothing.
bool Sh_StatusBrowser(TCvsObject& CvsObject);

/// Lets the user choose one of the object's symbolic names; `Name` stays as it is when none was.
void Get_ProjectTag(TCvsObject& CvsObject, TTagShowOption Option, std::string& Name);
/// Lets the user choose one of the object's revision dates. @return local time; 0 when none was.
framework::TDateTime Get_FileRevDate(TCvsObject& CvsObject);

/// Tells how an operation ended. @param text what was done. @param code the command's exit code.
void Show_OkForm(const std::string& caption, const std::string& text, int code);

/// Puts the client's question to the user; true for "Yes".
bool Sh_Confirm_Form(const std::string& question);

}  // namespace tandrel
