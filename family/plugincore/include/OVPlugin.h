#pragma once

#include "OVPluginCoreExport.h"

#include <QObject>
#include <QString>

/// A plug-in object offered by a plug-in container.
///
/// The host asks it what kind it is and who it is, and casts it to the matching interface
/// (OVImageFilePlugin, OVAdjustment, OVBrushPlugin).
class OVPLUGINCORE_EXPORT OVPlugin : public QObject
{
    Q_OBJECT
public:
    /// Kinds of plug-in objects. The host acts on ImageFileType itself; the others are for the
    /// registries that the plug-ins fill on their own.
    enum Type
    {
        UnknownType = 0,    ///< Not said.
        AdjustmentType = 1, ///< An OVAdjustment.
        ImageFileType = 2,  ///< An OVImageFilePlugin, registered by the plug-in loader.
        BrushType = 3,      ///< An OVBrushPlugin.
        ToolType = 4,       ///< A tool.
        FilterType = 5      ///< A filter.
    };

    /// The UID of the plug-in object that is also the editor's brush factory (see
    /// IBrushFactory).
    static constexpr const char* BrushFactoryUID = "{00000000-0000-0000-0000-000000000002}";

    /// A plug-in object with the given parent.
    explicit OVPlugin(QObject* parent = nullptr);
    ~OVPlugin() override;

    /// The kind of the object, a value of Type. The host relies on the order of these four
    /// virtual operations: GetType() first, GetUID() fourth.
    virtual int GetType() const = 0;
    /// The name shown to the user; the class name unless overridden.
    virtual QString GetName() const;
    /// The plug-in's version; empty unless overridden.
    virtual QString GetVersion() const;
    /// The plug-in's unique identifier, chosen by its author; compared exactly.
    virtual QString GetUID() const = 0;
};
