#include "view/GrepEditorHost.h"

// Here, so that the class has one home for its virtual table.
GrepEditorHost::~GrepEditorHost() = default;
