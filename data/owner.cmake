# What the owner of Tarnwick decides: names and addresses that the program shows and the packages
# carry. They are placeholders as long as they contain the word "example"; ./package warns of them.
# Nothing else in the project repeats them. Write plain ASCII, without quotes and backslashes.

# The publisher, who also holds the copyright.
set(TARNWICK_PUBLISHER "tarnwick.example")

# The licence as an SPDX expression; its words are in packaging/copyright.in.
set(TARNWICK_LICENCE "LicenseRef-proprietary")

# Where users write to: in the About box and in the boxes of errors.
set(TARNWICK_SUPPORT_ADDRESS "support@tarnwick.example")

# Who makes the Debian package.
set(TARNWICK_MAINTAINER "Tarnwick <packages@tarnwick.example>")

# The product's home page, and the web pages of the Help menu.
set(TARNWICK_HOME_PAGE "https://tarnwick.example")
set(TARNWICK_CHANGE_HISTORY "${TARNWICK_HOME_PAGE}/change-history.txt")
set(TARNWICK_PRESENTATION "${TARNWICK_HOME_PAGE}/tutorials/presentation")
set(TARNWICK_BATCH_PROCESSING "${TARNWICK_HOME_PAGE}/tutorials/batch-processing")
set(TARNWICK_SCRIPT_FORMATTING "${TARNWICK_HOME_PAGE}/tutorials/script-formatting")

# Where the pictures that software centres show can be fetched: a copy of docs/, with the same
# folders.
set(TARNWICK_PICTURES "${TARNWICK_HOME_PAGE}/docs")

# The name of the program for the desktop: the owner's domain in reverse order, then the program.
# It names the desktop entry and the icons, so a change makes pinned starters invalid.
set(TARNWICK_APPLICATION_ID "example.tarnwick.Tarnwick")
