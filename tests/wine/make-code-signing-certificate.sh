#!/usr/bin/env bash
# make-code-signing-certificate.sh DIR: a certificate authority of the
# test's own (DIR/ca.pem) and a code-signing certificate it issued
# (DIR/signing.pem, key DIR/signing.key), as a publisher's would be.
set -euo pipefail
dir=$1
mkdir -p "$dir"
cd "$dir"
command -v openssl >/dev/null ||
  { echo "openssl is not installed; scripts/install-dependencies.sh test installs it" >&2; exit 1; }

openssl req -x509 -newkey rsa:3072 -nodes -sha256 -days 30 -subj "/CN=Zirvel Test CA" \
  -addext "basicConstraints=critical,CA:TRUE" -addext "keyUsage=critical,keyCertSign,cRLSign" \
  -keyout ca.key -out ca.pem 2>/dev/null
openssl req -newkey rsa:3072 -nodes -sha256 -subj "/CN=Zirvel/O=Zirvel" \
  -keyout signing.key -out signing.csr 2>/dev/null
printf '%s\n' "basicConstraints=critical,CA:FALSE" "keyUsage=critical,digitalSignature" \
  "extendedKeyUsage=codeSigning" >signing.ext
openssl x509 -req -in signing.csr -CA ca.pem -CAkey ca.key -CAcreateserial -sha256 -days 30 \
  -extfile signing.ext -out signing.pem 2>/dev/null
# Another authority, which did not issue it: a signature must not verify against it.
openssl req -x509 -newkey rsa:3072 -nodes -sha256 -days 30 -subj "/CN=Another CA" \
  -keyout other-ca.key -out other-ca.pem 2>/dev/null
