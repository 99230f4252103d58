#pragma once

#include <QFont>

QT_BEGIN_NAMESPACE
class QCheckBox;
class QFontComboBox;
class QSpinBox;
QT_END_NAMESPACE

/// The three widgets of a form that show and edit one font: its family, its size
/// in points and whether it is bold. The widgets belong to the form, which must
/// outlive this object.
class FontFields {
public:
    /// A typed family that is not installed gives way to the one before, as soon as
    /// the user leaves the field.
    FontFields(QFontComboBox *family, QSpinBox *size, QCheckBox *bold, const QFont &font);

    /// The font as the widgets have it, with weight 75 or 50. The family stays
    /// that of the font that was shown, installed or not, until another one is
    /// chosen.
    QFont font() const;

private:
    void forgetUnknownFamilies() const;

    QFontComboBox *m_family;
    QSpinBox *m_size;
    QCheckBox *m_bold;
    QFont m_shown;
};
