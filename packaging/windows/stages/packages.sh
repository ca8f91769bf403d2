# shellcheck shell=bash
# What has to be installed.

stage_packages() {
    # The sounds are made by the program as it is built for this system.
    need build run windows
}
