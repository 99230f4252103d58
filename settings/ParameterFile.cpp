#include "settings/ParameterFile.h"

#include "settings/IniFile.h"

namespace {

const QString kPathList = QStringLiteral("pathlist");
const QString kMask = QStringLiteral("mask");
const QString kFindWord = QStringLiteral("findword");

IniFile escapedFile(const QString &path)
{
    return IniFile(path, IniDocument::Form::Escaped);
}

} // namespace

ParameterFile::ParameterFile(const QString &appDir)
    : m_path(appDir + QStringLiteral("sarvikpara.ini"))
{
}

ParameterFile::Content ParameterFile::read() const
{
    const IniDocument file = escapedFile(m_path).read();
    return {file.list(kPathList), file.text(kMask), file.text(kFindWord)};
}

bool ParameterFile::write(const Content &content) const
{
    return escapedFile(m_path).update([&content](IniDocument &file) {
        file.setValue(kPathList, content.pathlist);
        file.setValue(kMask, content.mask);
        file.setValue(kFindWord, content.findword);
    });
}
