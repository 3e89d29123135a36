#pragma once

#include <QString>
#include <exception>

/// The one failure that travels through the program: a customary number and a description for people.
/// Broken preconditions are assertions and never this.
class RunTimeFailure : public std::exception
{
public:
    enum Number {
        InvalidCall = 5,
        Overflow = 6,
        OutOfMemory = 7,
        SubscriptOutOfRange = 9,
        DivisionByZero = 11,
        TypeMismatch = 13,
        InternalError = 51,
        FileNotFound = 53,
        DeviceIoError = 57,
        DiskFull = 61,
        PermissionDenied = 70,
        PathFileAccessError = 75,
        PathNotFound = 76,
        ObjectNotSet = 91,
        CantCreateComponent = 429,
    };

    /// With the customary description of `number`.
    explicit RunTimeFailure(Number number);
    RunTimeFailure(int number, QString description);
    /// What is being caught, whatever it is: itself, 7 for a lack of memory, 51 with the words of anything
    /// else.
    static RunTimeFailure ofCaught();

    int number() const { return m_number; }
    const QString &description() const { return m_description; }
    /// Why something couldn't be done, as the end of a sentence: "the disk is full".
    QString reason() const;
    const char *what() const noexcept override { return m_what.constData(); }

private:
    int m_number;
    QString m_description;
    QByteArray m_what;
};
