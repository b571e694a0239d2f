#pragma once

#include <QStringList>

namespace tarnwick::platform {

// Matches bare file names against several wildcards, without regard to case: * stands for any
// characters, ? for one, nothing else is special. A final ".*" also matches a name without an
// extension, a final "." only such a name. A hidden name (".name") matches only a pattern that
// begins with a dot.
class Wildcards {
  public:
    explicit Wildcards(const QStringList& patterns);

    bool match(const QString& name) const;

  private:
    struct Pattern {
        QString text;  // folded
        bool bare;     // matches only names without a dot
        bool hidden;   // matches hidden names, too
    };
    QList<Pattern> patterns_;
};

}  // namespace tarnwick::platform
