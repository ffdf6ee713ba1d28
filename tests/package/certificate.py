"""A self-made certificate for signing, and whether it signed a program."""
import subprocess

PASSWORD = "Brindlework"


class Certificate:
    def __init__(self, folder):
        self.public = folder / "certificate.pem"
        key = folder / "key.pem"
        pair = folder / "certificate.p12"
        password = folder / "password"
        password.write_text(PASSWORD)
        subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "3650",
                        "-subj", "/CN=Brindlework", "-addext", "extendedKeyUsage=codeSigning",
                        "-keyout", key, "-out", self.public], check=True, capture_output=True)
        subprocess.run(["openssl", "pkcs12", "-export", "-in", self.public, "-inkey", key,
                        "-passout", f"pass:{PASSWORD}", "-out", pair], check=True)
        self.signing = {"DECLARIUM_CERTIFICATE": str(pair),
                        "DECLARIUM_CERTIFICATE_PASSWORD": str(password)}

    def signed(self, program):
        """Whether the program has a signature by it, and is as it was signed."""
        done = subprocess.run(["osslsigncode", "verify", "-CAfile", self.public, "-in", program],
                              capture_output=True, text=True)
        return done.returncode == 0
