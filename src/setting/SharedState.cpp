#include "setting/SharedState.h"

#include "setting/PathText.h"

#include <utility>

SharedState::SharedState(QString appPath, TextEncoding encoding)
    : AppPath(std::move(appPath))
    , Encoding(std::move(encoding))
{
    NewSetting();
}

void SharedState::NewSetting()
{
    SettingBuffer.resetToNewProject();
    SentencePath = appFolderWithSeparator();
    ProjectFileName = QStringLiteral("New File");
    ProjectFilePath = AppPath;
    ProjectFolder = AppPath;
    SurveillanceFile = true;
    EditWindowLoaded = false;
    CopyBufferToSetting(SettingSection::All);
    TakeSavedSnapshot();
}

QString SharedState::appFolderWithSeparator() const
{
    return withTrailingSeparator(AppPath);
}
