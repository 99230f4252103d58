#pragma once

#include "engine/SearchCondition.h"
#include "mainwindow/FormState.h"

/// What a form asks the engine for.
namespace FormRequest {

enum class Mode { Search, LineCount };

enum class Field { None, Keyword1, Paths, Mask };

/// The field for want of which the form cannot be run, the first one in the order of
/// the checks.
Field missing(Mode mode, const FormState &form);

/// What is said of a missing field.
QString refusal(Field missing);

/// A keyword whose group or check box is off is left out.
SearchCondition condition(Mode mode, const FormState &form);

} // namespace FormRequest
