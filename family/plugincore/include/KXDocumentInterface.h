#pragma once

#include "OVPluginCoreExport.h"

#include <QImage>
#include <QString>

/// An open document of the editor, as the host's save hook sees it.
class OVPLUGINCORE_EXPORT KXDocumentInterface
{
public:
    virtual ~KXDocumentInterface();

    /// The document's file; empty when it has none.
    virtual QString GetFilePath() const = 0;
    /// Sets the document's file.
    virtual void SetFilePath(const QString& path) = 0;
    /// The flattened image of the document.
    virtual QImage GetImage() const = 0;
    /// Whether the document has changes that are not saved.
    virtual bool IsModified() const = 0;
    /// Marks the document as changed or saved.
    virtual void SetModified(bool modified) = 0;
};
