#include "settings/dialogs/ProgramStyle.h"

#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>

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

    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override
    {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        // With the focus it has a light outline as it is.
        constexpr State kFocused = State_HasFocus | State_KeyboardFocusChange;
        if (element != PE_IndicatorCheckBox || (option->state & kFocused) == kFocused)
            return;
        painter->save();
        painter->setPen(ProgramStyle::boxOutline(option->palette));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        painter->restore();
    }
};

} // namespace

QColor ProgramStyle::boxOutline(const QPalette &palette)
{
    const QColor &text = palette.color(QPalette::WindowText);
    const QColor &ground = palette.color(QPalette::Window);
    const auto mixed = [](int one, int other) {
        return (one + other) / 2;
    };
    return QColor(mixed(text.red(), ground.red()), mixed(text.green(), ground.green()),
                  mixed(text.blue(), ground.blue()));
}

QStyle *ProgramStyle::create()
{
    return new FlatFusion(QStyleFactory::create(QStringLiteral("Fusion")));
}
