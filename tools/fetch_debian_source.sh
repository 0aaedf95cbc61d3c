#!/usr/bin/env bash
# Unpacks the source of a Debian package, in the release that this machine installs from:
#   tools/fetch_debian_source.sh SOURCE_PACKAGE FOLDER
# FOLDER is the unpacked source; what is there already is taken as it is. The machine's own configuration of apt tells
# where packages come from and stays as it is: the lists of sources are kept beside FOLDER.
set -euo pipefail

package=$1
folder=$2
apt=$folder.apt

if [[ -d $folder ]]; then
  exit 0
fi

rm -rf "$apt"
mkdir -p "$apt/lists/partial" "$apt/cache/archives/partial" "$apt/unpack"
apt=$(cd "$apt" && pwd)

# Debian's places of binary packages, asked for sources.
apt-get indextargets --format 'deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] $(REPO_URI) $(RELEASE) $(COMPONENT)' \
  'Created-By: Packages' 'Origin: Debian' | sort -u >"$apt/sources.list"
if [[ ! -s $apt/sources.list ]]; then
  echo "apt does not know where Debian's packages come from: run apt-get update, then try again." >&2
  exit 1
fi

cat >"$apt/apt.conf" <<CONF
Dir::Etc::SourceList "$apt/sources.list";
Dir::Etc::SourceParts "/dev/null";
Dir::State::Lists "$apt/lists";
Dir::Cache "$apt/cache";
APT::Sandbox::User "";
CONF
export APT_CONFIG=$apt/apt.conf

apt-get -q update
(cd "$apt/unpack" && apt-get -q source --only-source "$package")
unpacked=("$apt"/unpack/*/)
mv "${unpacked[0]}" "$folder"
rm -rf "$apt"
