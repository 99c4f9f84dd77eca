#include "OVDemoLook.h"

#include "OVApplication.h"

#include <QAction>
#include <QActionGroup>
#include <QColorDialog>
#include <QCoreApplication>
#include <QMenu>
#include <QPainter>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>

namespace {

const char* const kNextStart = QT_TRANSLATE_NOOP("OVDemoLook", "The change takes effect at the next start.");

QString Tr(const char* text)
{
    return QCoreApplication::translate("OVDemoLook", text);
}

// A checkable entry of an exclusive group that calls choose when it is picked.
template <typename Choose>
QAction* AddChoice(QMenu* menu, QActionGroup* group, const QString& text, bool checked, Choose choose)
{
    QAction* action = menu->addAction(text);
    action->setCheckable(true);
    action->setChecked(checked);
    group->addAction(action);
    QObject::connect(action, &QAction::triggered, menu, choose);
    return action;
}

QIcon Swatch(const QColor& colour)
{
    QPixmap pixmap(20, 20);
    pixmap.fill(colour);
    QPainter painter(&pixmap);
    painter.setPen(Qt::darkGray);
    painter.drawRect(pixmap.rect().adjusted(0, 0, -1, -1));
    return QIcon(pixmap);
}

// A button showing one of the application's colours; clicking it picks a new one.
QToolButton* SwatchButton(QToolBar* bar, const QString& tip, QColor (*get)(), void (*set)(const QColor&),
                          void (OVApplication::*changed)())
{
    QToolButton* button = new QToolButton(bar);
    button->setToolTip(tip);
    button->setIcon(Swatch(get()));
    QObject::connect(OVApplication::GetInstance(), changed, button,
                     [button, get] { button->setIcon(Swatch(get())); });
    QObject::connect(button, &QToolButton::clicked, button, [button, get, set, tip] {
        const QColor colour = QColorDialog::getColor(get(), button->window(), tip);
        if (colour.isValid())
            set(colour);
    });
    return button;
}

} // namespace

namespace OVDemoLook {

void Load()
{
    OVApplication* app = OVApplication::GetInstance();
    QString language = OVApplication::GetUserValue(OVApplication::LanguageIndex).toString();
    if (!app->GetLanguages().contains(language))
        language = OVApplication::GetDefaultLanguage();
    app->LoadLanguage(language);
    app->LoadTheme();
}

void AddMenus(QMenu* view, QStatusBar* status)
{
    auto nextStart = [status] { status->showMessage(Tr(kNextStart), 5000); };

    QMenu* theme = view->addMenu(Tr(QT_TRANSLATE_NOOP("OVDemoLook", "&Theme")));
    QActionGroup* themes = new QActionGroup(theme);
    const struct
    {
        OVApplication::ThemeType type;
        const char* text;
    } choices[] = {{OVApplication::Dark, QT_TRANSLATE_NOOP("OVDemoLook", "Dark")},
                   {OVApplication::Light, QT_TRANSLATE_NOOP("OVDemoLook", "Light")}};
    for (const auto& choice : choices) {
        const OVApplication::ThemeType type = choice.type;
        AddChoice(theme, themes, Tr(choice.text), OVApplication::GetApplicationTheme() == type,
                  [type, nextStart] {
                      OVApplication::SetApplicationTheme(type);
                      nextStart();
                  });
    }

    QMenu* language = view->addMenu(Tr(QT_TRANSLATE_NOOP("OVDemoLook", "&Language")));
    QActionGroup* languages = new QActionGroup(language);
    OVApplication* app = OVApplication::GetInstance();
    for (const QString& code : app->GetLanguages()) {
        AddChoice(language, languages, OVApplication::GetLanguageName(code), code == app->GetLanguage(),
                  [code, nextStart] {
                      OVApplication::SetUserValue(OVApplication::LanguageIndex, code);
                      nextStart();
                  });
    }
}

void AddSwatches(QToolBar* bar)
{
    bar->addWidget(SwatchButton(bar, Tr(QT_TRANSLATE_NOOP("OVDemoLook", "Foreground colour")),
                                &OVApplication::GetForeground, &OVApplication::SetForeground,
                                &OVApplication::ForegroundChanged));
    bar->addWidget(SwatchButton(bar, Tr(QT_TRANSLATE_NOOP("OVDemoLook", "Background colour")),
                                &OVApplication::GetBackground, &OVApplication::SetBackground,
                                &OVApplication::BackgroundChanged));
    QAction* swap = bar->addAction(Tr(QT_TRANSLATE_NOOP("OVDemoLook", "Swap")));
    swap->setToolTip(Tr(QT_TRANSLATE_NOOP("OVDemoLook", "Swap the foreground and background colours")));
    QObject::connect(swap, &QAction::triggered, bar, [] {
        const QColor foreground = OVApplication::GetForeground();
        OVApplication::SetForeground(OVApplication::GetBackground());
        OVApplication::SetBackground(foreground);
    });
}

} // namespace OVDemoLook
