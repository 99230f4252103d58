#pragma once

#include "engine/EngineOptions.h"
#include "engine/ExclusionList.h"
#include "engine/FileMask.h"
#include "engine/FolderClaims.h"
#include "engine/FolderQueue.h"
#include "engine/SearchCondition.h"
#include "engine/WorkQueue.h"

#include <atomic>
#include <memory>

class SearchPlan;

/// What all workers of one run share.
struct SharedRun {
    /// Entries that are handled between two looks at the abort flag.
    static constexpr int kEntriesPerAbortCheck = 100;

    bool isAborted() const { return aborted.load(std::memory_order_relaxed); }

    // Written before the workers start, read-only for them.
    EngineOptions options;
    SearchCondition condition;
    FileMask mask;
    ExclusionList exclusions;
    std::shared_ptr<const SearchPlan> plan;

    // Any thread.
    FolderQueue folders;
    WorkQueue files;
    FolderClaims claims;
    std::atomic<bool> aborted{false};
};
