#include "engine/FileLoader.h"

#include <algorithm>

FileLoader::FileLoader(const SearchLimits &limits, FileReader::TypeCheck typeCheck)
    : m_typeCheck(typeCheck)
{
    m_settings.sizeLimitBytes = limits.sizeLimitBytes();
    m_settings.sampleSize = limits.codechksize;
    m_settings.detectSize = limits.detectsize;
}

FileLoader::Outcome FileLoader::load(const QString &path)
{
    return detect(m_reader.read(path, m_settings.sizeLimitBytes, m_typeCheck));
}

FileLoader::Outcome FileLoader::open(const QString &path)
{
    const int sample = std::min(m_settings.sampleSize, kLargestSample);
    return detect(m_reader.open(path, m_settings.sizeLimitBytes, m_typeCheck, sample));
}

FileLoader::Outcome FileLoader::detect(FileReader::Status status)
{
    switch (status) {
    case FileReader::Status::CannotOpen:
        return Outcome::Skipped;
    case FileReader::Status::TooLarge:
        m_codeSet = kFileRefused;
        return Outcome::Refused;
    case FileReader::Status::Read:
        break;
    }
    m_codeSet = codeSetOfContent(m_reader.content(), m_reader.size(), m_reader.sizeAtOpen(),
                                 m_settings, &m_lineEnd, &m_hasMark);
    return m_codeSet < 0 ? Outcome::Refused : Outcome::Loaded;
}
