#include "cli/SearchRequest.h"

SearchCondition SearchRequest::condition(const Options &options, const QStringList &pathlist)
{
    SearchCondition condition;
    condition.pathlist = pathlist;
    condition.mask = options.mask;
    condition.keyword1 = options.keyword;
    condition.keyword2 = options.nearKeyword;
    condition.keyword3 = options.notKeyword;
    condition.plusline = options.within.value_or(0);
    condition.flg = (options.fixedStrings ? 0 : SearchCondition::RegExpFlag)
        | (options.word ? SearchCondition::WordFlag : 0)
        | (options.ignoreCase ? SearchCondition::IgnoreCaseFlag : 0);
    condition.fnameflg = options.namesWithoutHits;
    condition.subdir = options.subdirs;
    condition.linecount = options.mode != Options::Mode::Search;
    return condition;
}

EngineOptions SearchRequest::engineOptions(const Options &options, const SearchLimits &settings)
{
    EngineOptions engine;
    engine.limits = settings;
    engine.limits.bigsize = options.maxSize.value_or(settings.bigsize);
    engine.limits.tabcolm = options.tabWidth.value_or(settings.tabcolm);
    engine.limits.excludedFolders += options.excludedFolders;
    engine.limits.excludedFiles += options.excludedFiles;
    // A person may name a single file, which must not be one too few.
    engine.loadThreshold = 1;
    engine.reportEncodings = options.mode == Options::Mode::Encodings;
    return engine;
}
