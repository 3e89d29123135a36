#include "converter/frmConvert.h"

#include "converter/Progress.h"

frmConvert::frmConvert()
{
    setupUi(this);
}

void frmConvert::showStatus(const ConvertStatus &status)
{
    skConvertedFiles->setText(QString::number(status.ConvertedFiles));
    skTime->setText(QString::number(status.ElapsedSeconds));
    skTotalFiles->setText(QString::number(status.TotalFiles));
    skConvertingFile->setText(status.ConvertingFile);
    skOutputFormat->setText(status.OutputFormat);
    skOutputFormatString->setText(status.OutputFormatString);
    skFolder->setText(status.OutputFolder);
    skInputFormat->setText(status.InputFormat);
}

void frmConvert::showProgress(double ofFile, double ofJob)
{
    lblCurPer->setText(Progress::text(ofFile));
    picCur->setShare(ofFile);
    lblTotalPer->setText(Progress::text(ofJob));
    picTotal->setShare(ofJob);
}
