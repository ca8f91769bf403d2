# shellcheck shell=bash
# What has to be installed.

stage_packages() {
    need windows
}
