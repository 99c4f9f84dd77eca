#pragma once

#include "OVPluginCoreExport.h"

#include <QImage>
#include <QString>

// An open document of the editor, as the host's save hook sees it.
class OVPLUGINCORE_EXPORT KXDocumentInterface
{
public:
    virtual ~KXDocumentInterface();

    virtual QString GetFilePath() const = 0;
    virtual void SetFilePath(const QString& path) = 0;
    // The flattened image of the document.
    virtual QImage GetImage() const = 0;
    virtual bool IsModified() const = 0;
    virtual void SetModified(bool modified) = 0;
};
