#include "settings/KeywordHistory.h"

#include <QComboBox>

void KeywordHistory::fillCombo(QComboBox *combo) const
{
    combo->clear();
    combo->addItems(keywords());
}
