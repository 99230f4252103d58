#include "settings/dialogs/FontFields.h"

#include "settings/dialogs/NumberField.h"

#include <QCheckBox>
#include <QFontComboBox>
#include <QLineEdit>
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
    forgetUnknownFamilies();
    NumberField::show(*m_size, font.pointSize());
    m_bold->setChecked(font.weight() >= kLightestBold);
}

/// A family that is not installed is not taken, so it does not stay to be seen.
void FontFields::forgetUnknownFamilies() const
{
    QFontComboBox *box = m_family;
    // Otherwise Return would put whatever was typed among the installed ones.
    box->setInsertPolicy(QComboBox::NoInsert);
    // An installed family that is picked or typed becomes the box's current item.
    QObject::connect(box->lineEdit(), &QLineEdit::editingFinished, box,
                     [box, family = m_shown.family(), substitute = box->currentIndex()] {
                         if (box->findText(box->currentText(), Qt::MatchFixedString) >= 0)
                             return;
                         const int current = box->currentIndex();
                         box->setEditText(current == substitute ? family : box->itemText(current));
                     });
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
