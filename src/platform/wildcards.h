#pragma once

#include <QStringList>

namespace tarnwick::platform {

// Several wildcards at once, held against bare file names in either case: * stands for any
// characters, ? for one, nothing else is special. A last ".*" stands for no extension, too, and a
// last "." for none at all. A hidden name (".name") only matches what begins with a dot itself.
class Wildcards {
  public:
    explicit Wildcards(const QStringList& patterns);

    bool match(const QString& name) const;

  private:
    struct Pattern {
        QString text;  // folded
        bool bare;     // for names without a dot
        bool hidden;   // for hidden names, too
    };
    QList<Pattern> patterns_;
};

}  // namespace tarnwick::platform
