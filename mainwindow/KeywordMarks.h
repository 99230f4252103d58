#pragma once

struct FormState;
class GrepEditor;

namespace KeywordMarks {

/// Marks in view the keywords of the form that are in use, with the switches as
/// AppSettings has them.
void show(const GrepEditor &view, const FormState &form);

} // namespace KeywordMarks
