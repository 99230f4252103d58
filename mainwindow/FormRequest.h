#pragma once

#include "engine/SearchCondition.h"
#include "mainwindow/FormState.h"

/// What a form asks the engine for.
namespace FormRequest {

enum class Mode { Search, LineCount };

/// Why the form cannot be run, in the order of the checks; empty when it can.
QString refusal(Mode mode, const FormState &form);

/// A keyword whose group or check box is off is left out.
SearchCondition condition(Mode mode, const FormState &form);

} // namespace FormRequest
