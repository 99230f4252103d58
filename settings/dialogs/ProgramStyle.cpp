#include "settings/dialogs/ProgramStyle.h"

#include <QProxyStyle>
#include <QStyleFactory>

namespace {

class FlatFusion : public QProxyStyle {
public:
    explicit FlatFusion(QStyle *fusion) : QProxyStyle(fusion)
    {
        // It is still that style to whoever asks.
        setObjectName(fusion->objectName());
    }

    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *returned) const override
    {
        if (hint == SH_EtchDisabledText)
            return 0;
        return QProxyStyle::styleHint(hint, option, widget, returned);
    }
};

} // namespace

QStyle *ProgramStyle::create()
{
    return new FlatFusion(QStyleFactory::create(QStringLiteral("Fusion")));
}
