// TessalineForms STORE: a form with the control, on a store in a file. Control and store have to be
// registered, in the width of the program. The compiler that comes with Windows will do:
//   %windir%\Microsoft.NET\Framework64\v4.0.30319\csc /target:winexe /platform:x64 /codepage:65001 TessalineForms.cs
// The declarations are what aximp and tlbimp would make of the type library, as far as they are used here.
using System;
using System.Drawing;
using System.Runtime.InteropServices;
using System.Windows.Forms;

namespace TessalineForms
{
    [ComImport, Guid("28eef13c-4390-4823-aef8-0eece160529e")]
    [InterfaceType(ComInterfaceType.InterfaceIsIDispatch)]
    public interface IOrgPriseCharge
    {
        [DispId(31)]
        object TheClient { set; }
        [DispId(32)]
        object TheDatabase { set; }
        [DispId(2)]
        object DroitsUtilisateur { set; }
        [DispId(9)]
        void Init();
    }

    [ComImport, Guid("123a2f52-6bda-4176-859a-dcfc3b1e4f8a")]
    [InterfaceType(ComInterfaceType.InterfaceIsIDispatch)]
    public interface IOrgPriseChargeEvents
    {
        [DispId(1)]
        void Sortir();
        [DispId(2)]
        void Enregistre(string code, bool creation);
        [DispId(3)]
        void Supprime(string code);
        [DispId(4)]
        void Echec(string procedure, int numero, string description);
    }

    // The control as one of the form's. Keys, mnemonics and the focus are AxHost's business.
    public sealed class OrgPriseCharge : AxHost
    {
        private readonly IOrgPriseChargeEvents told;
        private ConnectionPointCookie connection;

        public OrgPriseCharge(IOrgPriseChargeEvents told) : base("4f1871cf-ae4d-4b9a-9033-b73ff2277ce1")
        {
            this.told = told;
        }

        // From when the form has a window.
        public IOrgPriseCharge Members
        {
            get { return (IOrgPriseCharge)GetOcx(); }
        }

        protected override void CreateSink()
        {
            connection = new ConnectionPointCookie(GetOcx(), told, typeof(IOrgPriseChargeEvents));
        }

        protected override void DetachSink()
        {
            if (connection != null) connection.Disconnect();
            connection = null;
        }
    }

    [ComVisible(true), ClassInterface(ClassInterfaceType.None)]
    public sealed class BodyEvents : IOrgPriseChargeEvents
    {
        private readonly Form form;
        private readonly string title;

        public BodyEvents(Form form)
        {
            this.form = form;
            title = form.Text;
        }

        // Nothing of the control runs any more when this comes: the form may go.
        public void Sortir()
        {
            form.Close();
        }

        public void Enregistre(string code, bool creation)
        {
            form.Text = title + " : " + code + (creation ? " créé" : " enregistré");
        }

        public void Supprime(string code)
        {
            form.Text = title + " : " + code + " supprimé";
        }

        public void Echec(string procedure, int numero, string description)
        {
            form.Text = title + " : " + procedure + ", " + description;
        }
    }

    public sealed class BodyForm : Form
    {
        private const int FullRights = 2;
        private readonly OrgPriseCharge control;
        private readonly string path;

        public BodyForm(string path)
        {
            this.path = path;
            Text = "Organismes";
            ClientSize = new Size(900, 660);
            control = new OrgPriseCharge(new BodyEvents(this));
            control.Dock = DockStyle.Fill;
            Controls.Add(control);
        }

        protected override void OnLoad(EventArgs arguments)
        {
            base.OnLoad(arguments);
            dynamic client = Made("TessalineStore.Client");
            dynamic rights = Made("TessalineStore.Rights");
            rights.SetLevel("CONSULTATIONORGCHARGE", FullRights);
            control.Members.TheClient = client;
            control.Members.TheDatabase = client.OpenDatabase(path);
            control.Members.DroitsUtilisateur = rights;
            control.Members.Init();
        }

        private static object Made(string name)
        {
            return Activator.CreateInstance(Type.GetTypeFromProgID(name, true));
        }
    }

    internal static class Program
    {
        [STAThread]
        private static int Main(string[] words)
        {
            if (words.Length != 1)
            {
                MessageBox.Show("usage: TessalineForms STORE");
                return 2;
            }
            Application.EnableVisualStyles();
            Application.Run(new BodyForm(words[0]));
            return 0;
        }
    }
}
