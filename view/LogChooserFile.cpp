#include "view/LogChooserFile.h"

#include "settings/IniFile.h"

namespace {

const QLatin1String kPosition("pos");
const QLatin1String kSize("size");
const QLatin1String kSplitterV("splitterV");
const QLatin1String kSplitterH("splitterH");

IniFile fileAt(const QString &path)
{
    return IniFile(path, IniDocument::Form::Escaped);
}

} // namespace

LogChooserFile::LogChooserFile(const QString &directory)
    : m_path(directory + QStringLiteral("fileDialog.ini"))
{
}

LogChooserFile::Geometry LogChooserFile::read() const
{
    const IniDocument file = fileAt(m_path).read();
    Geometry geometry;
    const QSize size = file.value(kSize).toSize();
    if (!size.isEmpty())
        geometry.size = size;
    geometry.splitterV = file.value(kSplitterV).toByteArray();
    geometry.splitterH = file.value(kSplitterH).toByteArray();
    return geometry;
}

bool LogChooserFile::save(const Geometry &geometry) const
{
    return fileAt(m_path).update([&geometry](IniDocument &file) {
        file.setValue(kPosition, geometry.position);
        file.setValue(kSize, geometry.size);
        file.setValue(kSplitterV, geometry.splitterV);
        file.setValue(kSplitterH, geometry.splitterH);
    });
}
