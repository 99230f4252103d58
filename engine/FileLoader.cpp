#include "engine/FileLoader.h"

#include "engine/FileCodeSet.h"

FileLoader::FileLoader(const SearchLimits &limits, FileReader::TypeCheck typeCheck)
    : m_limits(limits), m_typeCheck(typeCheck)
{
}

FileLoader::Outcome FileLoader::load(const QString &path)
{
    DetectionSettings settings;
    settings.sizeLimitBytes = m_limits.sizeLimitBytes();
    settings.sampleSize = m_limits.codechksize;
    settings.detectSize = m_limits.detectsize;
    switch (m_reader.read(path, settings.sizeLimitBytes, m_typeCheck)) {
    case FileReader::Status::CannotOpen:
        return Outcome::Skipped;
    case FileReader::Status::TooLarge:
        m_codeSet = kFileRefused;
        return Outcome::Refused;
    case FileReader::Status::Read:
        break;
    }
    m_codeSet = codeSetOfContent(m_reader.content(), m_reader.size(), m_reader.sizeAtOpen(),
                                 settings, &m_lineEnd, &m_hasMark);
    return m_codeSet < 0 ? Outcome::Refused : Outcome::Loaded;
}
