#pragma once

#include "cvs/Cvstempl.h"

/// Uses the package's forms as a host does that has steps and pages of its own; false when
/// something of it does not do what it should. Modal forms have to be answered with "Ok".
bool UseForms(tandrel::TCvsObject& cvs);
/// The same with the runner of tools.
bool UseRunner();
/// The same with the runner of commands and the model.
bool UseEngine(tandrel::TCvsObject& cvs);
