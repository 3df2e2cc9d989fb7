#!/usr/bin/env bash
# sign-code.sh FILE...: puts an Authenticode signature (SHA-256) on Windows
# programs, libraries and installers, in place, with osslsigncode.
#   ZIRVEL_SIGN_CERT   the code-signing certificate, PEM or DER, with its
#                      intermediate certificates after it in a PEM file
#   ZIRVEL_SIGN_KEY    its private key, PEM or DER
#   ZIRVEL_SIGN_KEY_PASSWORD_FILE   (optional) a file holding the key's password
#   ZIRVEL_SIGN_TIMESTAMP_URL       (optional) an RFC 3161 time-stamping
#                      service, so the signature stays valid after the
#                      certificate expires
set -euo pipefail

: "${ZIRVEL_SIGN_CERT:?the certificate to sign with}" "${ZIRVEL_SIGN_KEY:?its private key}"
command -v osslsigncode >/dev/null ||
  { echo "sign-code: osslsigncode is not installed; scripts/install-dependencies.sh test installs it" >&2; exit 1; }

options=(-certs "$ZIRVEL_SIGN_CERT" -key "$ZIRVEL_SIGN_KEY" -h sha256 -n Zirvel)
[[ -n "${ZIRVEL_SIGN_KEY_PASSWORD_FILE:-}" ]] && options+=(-readpass "$ZIRVEL_SIGN_KEY_PASSWORD_FILE")
[[ -n "${ZIRVEL_SIGN_TIMESTAMP_URL:-}" ]] && options+=(-ts "$ZIRVEL_SIGN_TIMESTAMP_URL")

for file in "$@"; do
  osslsigncode sign "${options[@]}" -in "$file" -out "$file.signed" >/dev/null
  mv -f "$file.signed" "$file"
done
