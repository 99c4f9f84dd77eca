#pragma once

#include "OVPluginCoreExport.h"

#include <QObject>
#include <QString>

// A plug-in object offered by a plug-in container. The host asks it what kind it is and who
// it is, and casts it to the matching interface.
class OVPLUGINCORE_EXPORT OVPlugin : public QObject
{
    Q_OBJECT
public:
    // Kinds of plug-in objects. The host acts on ImageFileType itself; the others are for the
    // registries that the plug-ins fill on their own.
    enum Type
    {
        UnknownType = 0,
        AdjustmentType = 1,
        ImageFileType = 2,
        BrushType = 3,
        ToolType = 4,
        FilterType = 5
    };

    // The plug-in object that is also the editor's brush factory (see IBrushFactory).
    static constexpr const char* BrushFactoryUID = "{00000000-0000-0000-0000-000000000002}";

    explicit OVPlugin(QObject* parent = nullptr);
    ~OVPlugin() override;

    // The host relies on the order of these four: GetType() first, GetUID() fourth.
    virtual int GetType() const = 0;
    virtual QString GetName() const;
    virtual QString GetVersion() const;
    // The plug-in's unique identifier, chosen by its author; compared exactly.
    virtual QString GetUID() const = 0;
};
