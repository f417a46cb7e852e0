#!/usr/bin/env bash
# Makes a server for the records of several benches in a folder, or starts the one that is there.
#   scripts/start-server.sh DIR [--host NAME] [--port N] [--local] [--like SAVED]
#   scripts/start-server.sh DIR --stop
#   scripts/start-server.sh DIR --renew [--host NAME]
# --host   the name by which the benches reach this computer (else its own); the certificate bears it
# --port   5432 unless told
# --renew  certificates for ten more years, of the same key: the benches' ca.crt goes on working until its own end
# --like   with the passwords and certificates of a server that was lost: a folder with copies of its bench.pgpass,
#          owner.pgpass and tls
# --local  no network: only programs on this computer, through the socket in DIR/run
# In DIR afterwards: data (the records), tls/ca.crt and bench.pgpass (what a bench needs), server.log.
# Started as root, the server runs as the account "postgres", since it refuses to run as root.
set -Eeuo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)

usage() { sed -n '2,13s/^# \{0,1\}//p' "$0" >&2; exit 2; }

[ $# -ge 1 ] || usage
folder=$(realpath -m "$1"); shift
host=$(hostname -f 2>/dev/null || hostname)
port=5432
network=yes
stop=no
renew=no
named=no
like=
while [ $# -gt 0 ]; do
  case "$1" in
    --host) [ $# -ge 2 ] || usage; host=$2; named=yes; shift 2 ;;
    --port) [ $# -ge 2 ] || usage; port=$2; shift 2 ;;
    --local) network=no; shift ;;
    --stop) stop=yes; shift ;;
    --renew) renew=yes; shift ;;
    --like) [ $# -ge 2 ] || usage; like=$(realpath -m "$2"); shift 2 ;;
    *) usage ;;
  esac
done
[[ "$port" =~ ^[0-9]+$ ]] && [ "$port" -ge 1 ] && [ "$port" -le 65535 ] || { echo "No port: $port" >&2; exit 2; }
[[ "$host" =~ ^[A-Za-z0-9.-]+$ ]] || { echo "No name of a computer: $host" >&2; exit 2; }

"$here/scripts/install-packages.sh" server
bin=$(find /usr/lib/postgresql/*/bin -maxdepth 0 | sort -V | tail -n 1)

# The server's own account and how to act as it.
account=$(id -un)
as_server=()
if [ "$(id -u)" = 0 ]; then
  account=postgres
  as_server=(setpriv --reuid postgres --regid postgres --init-groups)
fi
server() { (cd / && umask 077 && "${as_server[@]}" "$@"); }
admin() { server psql -X -q -v ON_ERROR_STOP=1 -h "$folder/run" -p "$port" -U sorvanto_admin "$@"; }
secret() { openssl rand -hex 24; }

# A key of our own for certificates, and one certificate for the name of this computer.
make_certificates() {
  if [ -n "$like" ]; then
    cp -r "$like/tls" "$folder/tls"
    chmod -R go= "$folder/tls"
    [ "$account" = "$(id -un)" ] || chown -R "$account": "$folder/tls"
    return
  fi
  server mkdir "$folder/tls"
  server openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 3650 -subj "/CN=Sorvanto records" \
    -keyout "$folder/tls/ca.key" -out "$folder/tls/ca.crt" 2>/dev/null
  make_own_certificate
}

make_own_certificate() {
  server openssl req -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -subj "/CN=$host" \
    -keyout "$folder/tls/new.key" -out "$folder/tls/server.csr" 2>/dev/null
  printf 'subjectAltName=DNS:%s\n' "$host" | server tee "$folder/tls/name" >/dev/null
  server openssl x509 -req -in "$folder/tls/server.csr" -CA "$folder/tls/ca.crt" -CAkey "$folder/tls/ca.key" \
    -CAcreateserial -days 3650 -extfile "$folder/tls/name" -out "$folder/tls/new.crt" 2>/dev/null
  server mv "$folder/tls/new.key" "$folder/tls/server.key"
  server mv "$folder/tls/new.crt" "$folder/tls/server.crt"
  server rm "$folder/tls/server.csr" "$folder/tls/name"
}

# The benches stay connected; the next ones to come get the new certificate.
renew_certificates() {
  server openssl x509 -in "$folder/tls/ca.crt" -signkey "$folder/tls/ca.key" -days 3650 -out "$folder/tls/new-ca.crt" 2>/dev/null
  server mv "$folder/tls/new-ca.crt" "$folder/tls/ca.crt"
  make_own_certificate
  server tee "$folder/made" >/dev/null <<<"$port $host $network"
  server "$bin/pg_ctl" -s -D "$folder/data" reload
}

write_settings() {
  local listen=''
  [ "$network" = no ] || listen='*'
  server tee "$folder/data/sorvanto.conf" >/dev/null <<CONF
listen_addresses = '$listen'
port = $port
unix_socket_directories = '$folder/run'
password_encryption = 'scram-sha-256'
ssl = on
ssl_cert_file = '$folder/tls/server.crt'
ssl_key_file = '$folder/tls/server.key'
ssl_min_protocol_version = 'TLSv1.2'
log_connections = on
log_min_messages = log            # no errors of statements: they quote names of patients
log_min_error_statement = panic   # nor the statements themselves
log_error_verbosity = terse
idle_in_transaction_session_timeout = '60s'
tcp_keepalives_idle = 30
tcp_keepalives_interval = 10
tcp_keepalives_count = 3
CONF
}

# The administrator comes through the socket alone, as the account that runs the server. Nobody comes unencrypted
# from another computer.
write_doors() {
  server tee "$folder/data/pg_hba.conf" >/dev/null <<DOORS
local   all       sorvanto_admin                            peer map=admin
local   sorvanto  sorvanto_owner,+sorvanto_bench            scram-sha-256
hostssl sorvanto  sorvanto_owner,+sorvanto_bench  all       scram-sha-256
DOORS
  server tee "$folder/data/pg_ident.conf" >/dev/null <<<"admin $account sorvanto_admin"
}

start() { server "$bin/pg_ctl" -s -w -D "$folder/data" -l "$folder/server.log" start; }

# A new password, or that of a lost server: what stands behind the last colon of its file.
password_of() {
  if [ -n "$like" ]; then sed -n '1s/.*://p' "$like/$1.pgpass"; else secret; fi
}

# Together or not at all; benches that are at work notice nothing of it.
set_rights() {
  admin -d sorvanto -1 -f - < <(echo "SET client_min_messages = warning;" && cat "$here/data/server/rights.sql")
}

# Secrets go in by standard input, never as an argument that others can see.
make_records() {
  local owner bench
  owner=$(password_of owner)
  bench=$(password_of bench)
  admin -d postgres <<SQL
CREATE ROLE sorvanto_owner LOGIN PASSWORD '$owner';
CREATE ROLE sorvanto_bench NOLOGIN;
CREATE ROLE bench LOGIN IN ROLE sorvanto_bench PASSWORD '$bench' CONNECTION LIMIT 100;
CREATE DATABASE sorvanto OWNER sorvanto_owner TEMPLATE template0 ENCODING 'UTF8' LOCALE 'C';
REVOKE ALL ON DATABASE sorvanto, postgres, template1 FROM PUBLIC;
GRANT CONNECT ON DATABASE sorvanto TO sorvanto_bench;
SQL
  admin -d sorvanto -c 'SET ROLE sorvanto_owner' -f - \
    < <(cd "$here/data/server" && cat schema.sql history.sql dialect.sql benches.sql) >/dev/null
  set_rights
  # Any host, so that the line is right for the socket and for the network.
  server tee "$folder/owner.pgpass" >/dev/null <<<"*:$port:sorvanto:sorvanto_owner:$owner"
  server tee "$folder/bench.pgpass" >/dev/null <<<"*:$port:sorvanto:bench:$bench"
}

make() {
  if [ -n "$(ls -A "$folder" 2>/dev/null)" ]; then
    echo "$folder is not empty and holds no server; nothing was done." >&2
    exit 1
  fi
  for saved in bench.pgpass owner.pgpass tls/ca.crt tls/server.key; do
    [ -z "$like" ] || [ -r "$like/$saved" ] || { echo "There is no $like/$saved; nothing was done." >&2; exit 1; }
  done
  # "made" comes last, so that a broken attempt is never taken for a server.
  trap 'server "$bin/pg_ctl" -s -m immediate -D "$folder/data" stop 2>/dev/null || true
        find "$folder" -mindepth 1 -delete; echo "The server was not made." >&2' ERR
  install -d -m 711 "$folder"
  [ "$account" = "$(id -un)" ] || chown "$account": "$folder"
  server mkdir -m 755 "$folder/run"
  make_certificates
  server "$bin/initdb" -D "$folder/data" -U sorvanto_admin -E UTF8 --locale=C --data-checksums \
    --auth=reject --auth-local=peer >/dev/null
  server tee -a "$folder/data/postgresql.conf" >/dev/null <<<"include 'sorvanto.conf'"
  write_settings
  write_doors
  start
  make_records
  server tee "$folder/made" >/dev/null <<<"$port $host $network"
  trap - ERR
}

if [ "$stop" = yes ]; then
  server "$bin/pg_ctl" -s -w -m fast -D "$folder/data" stop
  exit 0
fi
if server test -e "$folder/made"; then
  wanted=$host
  read -r port host network < <(server cat "$folder/made")
  server "$bin/pg_ctl" -s -D "$folder/data" status >/dev/null || start
  set_rights || echo "The rights of the benches stay as they were. Bring the records up to date, and call this once more." >&2
  if [ "$renew" = yes ]; then
    [ "$named" = no ] || host=$wanted
    renew_certificates
  fi
elif [ "$renew" = yes ]; then
  echo "$folder holds no server; nothing was done." >&2
  exit 1
else
  make
fi

address="postgresql://bench@$host:$port/sorvanto"
if [ "$network" = no ]; then
  address="postgresql://bench@/sorvanto?host=$folder/run&port=$port"
fi
echo "The server runs. Data location of each bench:"
echo "  $address"
echo "A bench also needs, in the home folder of who works there:"
echo "  $folder/bench.pgpass as .pgpass, readable by its owner alone"
[ "$network" = no ] || echo "  $folder/tls/ca.crt as .postgresql/root.crt"
