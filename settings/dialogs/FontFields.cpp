#include "settings/dialogs/FontFields.h"

#include "settings/dialogs/NumberField.h"

#include <QCheckBox>
#include <QFontComboBox>
#include <QSpinBox>

namespace {

constexpr int kLightestBold = 58;

} // namespace

FontFields::FontFields(QFontComboBox *family, QSpinBox *size, QCheckBox *bold, const QFont &font)
    : m_family(family), m_size(size), m_bold(bold), m_shown(font)
{
    m_family->setCurrentFont(font);
    // For a family that is not installed the box shows its substitute.
    m_family->setEditText(font.family());
    NumberField::show(*m_size, font.pointSize());
    m_bold->setChecked(font.weight() >= kLightestBold);
}

QFont FontFields::font() const
{
    QFont font = m_shown;
    const int chosen = m_family->findText(m_family->currentText(), Qt::MatchFixedString);
    if (m_family->currentText() != m_shown.family() && chosen >= 0)
        font.setFamily(m_family->itemText(chosen));
    if (m_size->value() > 0)
        font.setPointSize(m_size->value());
    font.setWeight(m_bold->isChecked() ? QFont::Bold : QFont::Normal);
    return font;
}
